#ifndef BOARD_COMMANDHANDLERS_H
#define BOARD_COMMANDHANDLERS_H

#include <Board/Export.h>
#include <foundation/Collection.h>

namespace Board
{

class CommandHandler;

/// A handle on the engine's queue of commands, with the two views that drive the engine.
///
/// Nothing is copied: each walk reads the live queue and asks every handler anew, in the order of
/// the queue. To be used on the thread of the engine.
class BOARD_EXPORT CommandHandlers : public Orvex::Collection<CommandHandler*>
{
public:
    explicit CommandHandlers(const Orvex::Collection<CommandHandler*>& handlers);

    /// The handlers without a reply. One that is running is still pending.
    Orvex::Collection<CommandHandler*> getPendings() const;
    /// The handlers whose reply the engine is waiting for: at most one.
    Orvex::Collection<CommandHandler*> getRunnings() const;
};

} // namespace Board

#endif
