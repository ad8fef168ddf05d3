#include <Board/CommandHandlers.h>

#include <Board/CommandHandler.h>
#include <foundation/MemberPredicate.h>
#include <foundation/NotPredicate.h>
#include <foundation/SubsetCollection.h>

namespace Board
{

namespace
{

using HandlerPredicate = Orvex::Predicate<CommandHandler*, bool>;
using HandlerMember = Orvex::MemberPredicate<CommandHandler*, bool>;
using HandlerSubset = Orvex::SubsetCollection<CommandHandler*, bool>;

} // namespace

CommandHandlers::CommandHandlers(const Orvex::Collection<CommandHandler*>& handlers)
    : Orvex::Collection<CommandHandler*>(handlers)
{
}

Orvex::Collection<CommandHandler*> CommandHandlers::getPendings() const
{
    static const HandlerPredicate isPending = Orvex::NotPredicate<CommandHandler*>(
        HandlerPredicate(HandlerMember(&CommandHandler::hasFinished)));
    return HandlerSubset(*this, isPending);
}

Orvex::Collection<CommandHandler*> CommandHandlers::getRunnings() const
{
    static const HandlerPredicate isBeingExecuted = HandlerMember(&CommandHandler::isRunning);
    return HandlerSubset(*this, isBeingExecuted);
}

} // namespace Board
