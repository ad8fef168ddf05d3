#ifndef BOARD_KSBASEHANDLER_H
#define BOARD_KSBASEHANDLER_H

#include <Board/CommandHandler.h>
#include <Board/CommandHandlers.h>
#include <Board/Export.h>
#include <foundation/Collection.h>
#include <foundation/QStuff.h>

#include <QFile>
#include <QPointer>
#include <QSemaphore>
#include <QString>
#include <QThread>
#include <QTimer>

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>

class QEventLoop;
class QProcess;

namespace Board
{

class MainWindow;
class ReplyBuffer;
class Scheduler;
class Tamsa;

/// The engine: the one long-lived board tool, the queue of commands, the mirror of the boards and
/// the typed operations on a board.
///
/// Everything here lives on the GUI thread and is touched there only. One command runs at a time: a
/// worker thread is started for it and sleeps in an event loop until the GUI thread has seen the
/// end of the reply. What the worker needs of the engine it has done on the GUI thread, and waits.
///
/// Unless told otherwise the operations run on the GUI thread and return only when the tool has
/// answered, in a nested event loop without a time limit. Verdicts go to `Orvex::console`. When the
/// wait ends without an answer, because the engine has been destroyed meanwhile or the application
/// leaves its event loops, they throw Orvex::InvalidRequest.
class BOARD_EXPORT KSBaseHandler : public Orvex::QStuff
{
    Q_OBJECT

public:
    /// The order of the queue: by type, then first come, first served. Null sorts first.
    struct BOARD_EXPORT CommandHandlerSetLess {
        bool operator()(const CommandHandler* a, const CommandHandler* b) const;
    };

    /// Finds the tool on the search path, opens the transcript and starts the tool.
    ///
    /// @throws Orvex::FactoryFailed for a null window, Orvex::Critical when the tool is not on the
    /// search path or the transcript cannot be written.
    static KSBaseHandler* create(MainWindow* window);
    static void preCreate(const MainWindow* window);
    void postCreate(MainWindow* window);
    /// Ends the tool and deletes the engine. Nothing in the library calls it. The waits that are
    /// under way end without a reply; an operation of the engine that waited then throws.
    void destroy();

    /// The text that the tool has written for the command in flight, one character a byte.
    const QString& getData() const;

    /// A command exchange, or the start of the tool, is under way.
    bool isRunning() const { return running; }
    /// A pass over the listing of boards is under way.
    bool isRefreshing() const { return refreshing; }
    /// A monitoring read is under way.
    bool isMonitoring() const { return monitoring; }

    // The queue

    /// Puts a handler into the queue and announces it.
    void attach(CommandHandler* handler);
    /// Takes a handler out of the queue. The reply of one that is running is then dropped.
    void detach(CommandHandler* handler);
    /// The number for the next handler; counts up. It starts again at 0 when the queue stood empty.
    std::uint64_t getCurrentCommandID() const;
    CommandHandlers getCommandHandlers() const;

    /// Runs one command to its end. Worker thread, from `Scheduler::launch` only.
    ///
    /// @throws Orvex::InvalidRequest when a command is running, Orvex::Fatal for a null handler or
    /// when the wait ended without a reply.
    void executeCommand(CommandHandler* handler);

    /// Sends a command that a person wrote and returns the whole reply. Outside debug mode nothing
    /// is sent and the reply is empty. @throws Orvex::FactoryFailed for an empty text.
    std::string sendCommand(const std::string& command);

    // The boards

    /// The known boards in the order of their names: a live view.
    Orvex::Collection<Tamsa*> getTamsas() const;
    /// The board of exactly that name, or null.
    Tamsa* getTamsa(const std::string& name) const;
    /// The number by which the tool addresses a board: the position of its name; -1 for none.
    int getIndex(const std::string& name) const;
    void attach(Tamsa* tamsa);
    void detach(Tamsa* tamsa);
    /// Has the tool select a board. A refusal leaves the selection as it was.
    void select(const std::string& name);
    /// The board that the tool marked in the last listing or that was selected since; null when
    /// none. Owned by the engine; ends when the board leaves the listing.
    Tamsa* getSelectedTamsa() const;
    /// Drives a board to the known state of a new one: mode "Jtag only", clock on, one reset pulse;
    /// then restores the selection. An empty name does nothing.
    void initialize(const std::string& name);

    // The operations on the selected board

    /// The mode as the tool writes it: the first line of its reply.
    std::string _getMode();
    std::string getMode() const;
    /// The force bit; false when the tool refuses to tell. @throws Orvex::Fatal for a reply that
    /// says nothing of it.
    bool _getForceBit();
    bool getForceBit() const;
    /// The whole reply to a monitoring read; empty, and nothing is sent, while another read waits.
    std::string _getMonitor(unsigned long index);
    std::string getMonitor(unsigned long index) const;
    /// The last commanded state of the selected board; false without one.
    bool getResetBit() const;
    bool getClockBit() const;

    void setMode(const std::string& mode);
    void setResetBit(bool isOn);
    void setClockBit(bool isOn);
    void setForceBit(bool isOn);
    /// Programs the SPI flash with a file. The path goes to the tool as it stands.
    void programFlash(const std::string& path);
    /// Loads a file into the chip. The path goes to the tool as it stands.
    void sendBitstream(const std::string& path);
    /// Chooses who handles the errors of the loads that follow, and where they are written: nowhere
    /// when the path is empty.
    void setErrorHandler(const std::string& name, const std::string& outfilepath);

    std::string _getLabel() const override;
    Orvex::Slot* _getSlot() const override;
    Orvex::Record* _getRecord() const override;
    bool _hasRecord() const override;
    void preDestroy() override;
    std::string getAlias() const override;

signals:
    /// A handler has joined the queue.
    void commandAdded() const;
    /// The mark that ends a reply stands in the text gathered so far.
    void commandDone() const;

public slots:
    /// Mirrors the tool's listing: new boards are brought up, those that left are forgotten.
    ///
    /// @throws Orvex::FactoryFailed for a board line without a name; no later pass does anything
    /// then.
    void refreshTamsaMap();
    /// The tool has ended: tells its last words and ends the process with status 1.
    void onProcessFinished();
    /// Takes what the tool has written on its standard error.
    void processCommand();
    /// Starts the worker when a command is pending and the worker is not at work.
    void startThread();
    /// Shows the command in flight and its time in the status bar.
    void onTimeout();

private:
    friend class Scheduler;

    explicit KSBaseHandler(MainWindow* window);
    ~KSBaseHandler() override;

    /// The first pending handler, for `executeCommand`; null when none is pending. Worker thread.
    CommandHandler* chooseCommandHandler();

    /// Has the GUI thread do the work while the worker waits; its exception is rethrown here.
    template <class Work>
    void callOnEngineThread(Work work);
    void beginCommand(QEventLoop* loop);
    CommandHandler* endCommand(QString* reply);
    void deliver(CommandHandler* receiver, QString reply);
    template <class Work>
    void doWithinMemory(Work work);
    void giveReplyUp();
    void settle(const CommandHandler* handler);
    void endWorker();
    void log(const QByteArray& bytes);
    bool startWorker();
    void chooseAhead();
    void chooseFirstPending();
    void mirrorTool();

    std::string exchange(CommandHandler::CommandType type, const std::string& command);
    std::string waitReply(CommandHandler* handler);
    bool sendSetting(const std::string& command);

    std::list<Tamsa*> mirrorListing(const std::string& reply, std::list<Tamsa*>* presentTamsas);
    bool connectTamsas(const std::list<Tamsa*>& newTamsas);
    bool disconnectTamsas(const std::list<Tamsa*>& presentTamsas);

    const QPointer<MainWindow> mainWindow; ///< not owned; the engine outlives it
    QProcess* const process;
    bool running;
    bool refreshing;
    bool monitoring;
    std::unique_ptr<ReplyBuffer> replyBuffer;
    std::map<std::string, Tamsa*> tamsas;
    QPointer<Tamsa> selectedTamsa;
    std::set<CommandHandler*, CommandHandlerSetLess> commandHandlers;
    mutable std::uint64_t currentCommandID;
    Scheduler* scheduler;
    QThread thread;
    QTimer* commandTimer;
    std::uint64_t commandSeconds;
    QFile logFile;

    /// The handler that the worker has chosen, until its reply is taken; null when it left before.
    CommandHandler* executing;
    /// The handler that was chosen last, for the worker: unlike `executing` it stays as it is.
    CommandHandler* chosen;
    /// Holds something when the worker that is starting need not ask for the choice.
    QSemaphore choicesAhead;
    /// The handler that this run of the worker gives its reply to; null when it left.
    CommandHandler* delivering;
    /// Runs while a command waits for something that the worker thread needs.
    QTimer retryTimer;
    /// The end of the engine or of the tool has begun: the worker is not started any more.
    bool closing;
    /// Receives what the worker has done on the GUI thread, and nothing else.
    QObject workerCalls;
};

} // namespace Board

#endif
