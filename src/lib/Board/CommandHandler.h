#ifndef BOARD_COMMANDHANDLER_H
#define BOARD_COMMANDHANDLER_H

#include <Board/Export.h>
#include <foundation/QStuff.h>

#include <QPointer>

#include <cstdint>
#include <string>

namespace Board
{

class KSBaseHandler;

/// One command for the board tool: its text, its place in the queue and the reply.
///
/// The handler is queued from `create` to `destroy`, finished or not. The usual order, all on the
/// GUI thread, is `create`, `waitCommandHandlerReady`, `getResult`, `destroy`. It has no QObject
/// parent: whoever created it owns it and ends it with `destroy`.
class BOARD_EXPORT CommandHandler : public Orvex::QStuff
{
    Q_OBJECT

public:
    /// The priority class of a command. The number is the priority: the lower one runs first.
    enum class CommandType : std::uint32_t {
        Invalid = 0,  ///< never held by a handler
        Control = 1,  ///< a short setting or query, and whatever a person typed
        Transfer = 2, ///< a bitstream load or a flash programming
        Refresh = 3,  ///< the listing of the boards
        Monitor = 4   ///< a reading of voltages and currents
    };

    /// Ends a handler that a smart pointer owns.
    struct Destroyer {
        void operator()(CommandHandler* handler) const { handler->destroy(); }
    };

    /// Queues a command; the worker may be executing it already when this returns.
    ///
    /// @throws Orvex::FactoryFailed for an invalid type, an empty text or a null engine, with
    /// nothing made.
    static CommandHandler* create(const CommandType& type, const std::string& text,
                                  KSBaseHandler* engine);

    /// Refuses the arguments that `create` cannot take. @throws Orvex::FactoryFailed
    static void preCreate(const CommandType& type, const std::string& text,
                          const KSBaseHandler* engine);

    /// Numbers the handler and joins the engine's queue, in this order: the number decides the
    /// place.
    void postCreate(const CommandType& type, const std::string& text, KSBaseHandler* engine);

    /// Leaves the queue and deletes the handler. On the thread that created it.
    void destroy();

    CommandType getCommandType() const { return commandType; }
    const std::string& getCommand() const { return command; }
    /// The whole reply with its end mark, as the tool's bytes; empty until the command has
    /// finished.
    const std::string& getResult() const { return result; }
    /// The sequence number within the queue, from 0.
    std::uint64_t getId() const { return id; }

    /// True when the reply is there. The emptiness of the reply is the only such state.
    bool hasFinished() const;
    /// True while the engine waits for the tool's reply to this command.
    bool isRunning() const;
    void setRunning(bool isRunning);
    /// Stores the reply, then emits `resultReady`. Called on the worker thread.
    /// @{
    void setResult(const std::string& reply);
    void setResult(std::string&& reply);
    /// @}

    std::string _getLabel() const override;
    Orvex::Slot* _getSlot() const override;
    Orvex::Record* _getRecord() const override;
    bool _hasRecord() const override;
    void preDestroy() override;
    std::string getAlias() const override;

signals:
    /// The reply is in place. Emitted on the worker thread.
    void resultReady();

private:
    friend BOARD_EXPORT void waitCommandHandlerReady(CommandHandler* handler);

    CommandHandler(const CommandType& type, const std::string& text, KSBaseHandler* engine);
    ~CommandHandler() override;

    const CommandType commandType;
    const std::string command;
    std::string result;
    /// Not owned. Empty only when the engine went first: then there is no queue to leave.
    const QPointer<KSBaseHandler> ksBaseHandler;
    std::uint64_t id;
    bool running;
};

/// Waits in a nested event loop, without a time limit, until the handler has its reply.
///
/// The window stays live meanwhile, so waits can nest; they end in reverse order of entry. A null
/// handler returns at once. The wait ends without a reply when the engine is destroyed or the
/// application leaves its event loops. GUI thread.
BOARD_EXPORT void waitCommandHandlerReady(CommandHandler* handler);

} // namespace Board

#endif
