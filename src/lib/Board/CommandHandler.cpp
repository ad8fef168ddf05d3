#include <Board/CommandHandler.h>

#include <Board/IntrospectionRecord.h>
#include <Board/KSBaseHandler.h>
#include <foundation/FactoryFailed.h>
#include <foundation/GetSlot.h>
#include <foundation/HandOff.h>
#include <foundation/Raise.h>
#include <foundation/StandardSlot.h>

#include <QAbstractEventDispatcher>
#include <QEventLoop>

#include <memory>
#include <utility>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/CommandHandler";

void refuse(const char* message, unsigned long line)
{
    Orvex::raise(Orvex::FactoryFailed(message), "preCreate", sourceFile, line);
}

} // namespace

CommandHandler* CommandHandler::create(const CommandType& type, const std::string& text,
                                       KSBaseHandler* engine)
{
    preCreate(type, text, engine);
    // A failure while the handler is being hooked up leaves nothing in the queue.
    std::unique_ptr<CommandHandler, Destroyer> handler(new CommandHandler(type, text, engine));
    handler->postCreate(type, text, engine);
    return handler.release();
}

void CommandHandler::preCreate(const CommandType& type, const std::string& text,
                               const KSBaseHandler* engine)
{
    if (type == CommandType::Invalid) {
        refuse("Invalid commandType", __LINE__);
    }
    if (text.empty()) {
        refuse("Empty command", __LINE__);
    }
    if (engine == nullptr) {
        refuse("Null ksBaseHandler", __LINE__);
    }
}

CommandHandler::CommandHandler(const CommandType& type, const std::string& text,
                               KSBaseHandler* engine)
    : commandType(type)
    , command(text)
    , ksBaseHandler(engine)
    , id(0)
    , running(false)
{
}

CommandHandler::~CommandHandler() = default;

void CommandHandler::postCreate(const CommandType& /*type*/, const std::string& /*text*/,
                                KSBaseHandler* engine)
{
    id = engine->getCurrentCommandID();
    engine->attach(this);
}

void CommandHandler::destroy()
{
    preDestroy();
    delete this;
}

void CommandHandler::preDestroy()
{
    if (ksBaseHandler) {
        ksBaseHandler->detach(this);
    }
}

bool CommandHandler::hasFinished() const
{
    return !result.empty();
}

bool CommandHandler::isRunning() const
{
    return running;
}

void CommandHandler::setRunning(bool isRunning)
{
    running = isRunning;
}

void CommandHandler::setResult(const std::string& reply)
{
    setResult(std::string(reply));
}

void CommandHandler::setResult(std::string&& reply)
{
    result = std::move(reply);
    Orvex::handOver(this);
    emit resultReady();
}

std::string CommandHandler::getAlias() const
{
    return "CommandHandler[" + command + "]";
}

std::string CommandHandler::_getLabel() const
{
    return getAlias();
}

bool CommandHandler::_hasRecord() const
{
    return true;
}

Orvex::Slot* CommandHandler::_getSlot() const
{
    return new Orvex::StandardSlot<CommandHandler*>(this);
}

Orvex::Record* CommandHandler::_getRecord() const
{
    Orvex::Record* const record = makeRecord(*this, "CommandHandler");
    if (record != nullptr) {
        addSlot(record, "Type", Orvex::getSlot(static_cast<int>(commandType)));
        addSlot(record, "Command", Orvex::getSlot(command));
        addSlot(record, "Result", Orvex::getSlot(result));
    }
    return record;
}

void waitCommandHandlerReady(CommandHandler* handler)
{
    // Without its engine a command is never answered.
    if (handler == nullptr || handler->ksBaseHandler == nullptr) {
        return;
    }
    QEventLoop loop;
    // The signal comes from the worker; the quit has to be served by this thread's loop.
    QObject::connect(handler, SIGNAL(resultReady()), &loop, SLOT(quit()), Qt::QueuedConnection);
    QObject::connect(handler->ksBaseHandler, &QObject::destroyed, &loop, &QEventLoop::quit);
    // Begun in a posted event, the loop would sleep on those that were posted before it.
    QAbstractEventDispatcher::instance()->wakeUp();
    loop.exec();
    Orvex::takeOver(handler);
}

} // namespace Board
