#include <Board/KSBaseHandler.h>

#include <Board/BoardListing.h>
#include <Board/Folio.h>
#include <Board/IntrospectionRecord.h>
#include <Board/MainWindow.h>
#include <Board/Replies.h>
#include <Board/ReplyBuffer.h>
#include <Board/Scheduler.h>
#include <Board/Tamsa.h>
#include <Board/WorkerEventDispatcher.h>
#include <foundation/Console.h>
#include <foundation/Critical.h>
#include <foundation/Debug.h>
#include <foundation/Encoding.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Fatal.h>
#include <foundation/ForEachControler.h>
#include <foundation/FromCollection.h>
#include <foundation/HandOff.h>
#include <foundation/InvalidRequest.h>
#include <foundation/ListCollection.h>
#include <foundation/MapCollection.h>
#include <foundation/Raise.h>
#include <foundation/SetCollection.h>
#include <foundation/StandardSlot.h>
#include <foundation/Text.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSocketNotifier>
#include <QStatusBar>
#include <QTime>

#include <chrono>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <poll.h>
#include <utility>

namespace Board
{

namespace
{

using namespace std::chrono_literals;

const char sourceFile[] = "src/lib/Board/KSBaseHandler";
const char toolName[] = "ksbase2_cli";
const char logFileName[] = "ksbase.log";

const std::chrono::milliseconds commandTick = 1000ms;
/// Longer than the tick, so that the text stands without a gap while the command runs.
const std::chrono::milliseconds commandStatusTime = 1200ms;
const std::chrono::milliseconds pollInterval = 5000ms;
/// How long the tool may take to end by itself once its input has ended.
const std::chrono::milliseconds toolEndTime = 3000ms;
/// How long the end of the worker is waited for before a look at what the worker asks for.
const std::chrono::milliseconds workerServeStep = 1ms;

/// How long a command that finds no means for a worker waits before the next attempt.
const std::chrono::milliseconds startRetryInterval = 1000ms;

/// What a command gets whose own reply could not be kept: as a refusal, so that nothing is taken to
/// have worked of which nobody knows.
const char lostReply[] = "Error: the reply does not fit into the memory\nCOMMAND FAILED\n";

const std::uint64_t secondsPerDay = 24ULL * 60 * 60;

using OwnedCommandHandler = std::unique_ptr<CommandHandler, CommandHandler::Destroyer>;

std::string getOnOff(bool isOn)
{
    return isOn ? "on" : "off";
}

/// Says on the console whether an operation worked.
void tellVerdict(bool worked, const std::string& success, const std::string& failure)
{
    if (worked) {
        Orvex::console->print(success, "");
    } else {
        Orvex::console->error(failure, "");
    }
}

void printLines(const QByteArray& bytes)
{
    for (const QByteArray& line : bytes.split('\n')) {
        Orvex::console->print(line.toStdString(), "");
    }
}

/// Has the process take what stands in its pipes, as the event loop would in one round: an error of
/// one pipe may come before the words in another.
void readPending(const QProcess& process)
{
    QList<QPointer<QSocketNotifier>> notifiers;
    for (QSocketNotifier* const notifier : process.findChildren<QSocketNotifier*>()) {
        notifiers += notifier;
    }
    for (const QPointer<QSocketNotifier>& notifier : notifiers) {
        if (!notifier || notifier->type() != QSocketNotifier::Read || !notifier->isEnabled()) {
            continue;
        }
        pollfd entry{static_cast<int>(notifier->socket()), POLLIN, 0};
        if (poll(&entry, 1, 0) > 0) {
            QEvent readable(QEvent::SockAct);
            QCoreApplication::sendEvent(notifier, &readable);
        }
    }
}

bool hasTool(QProcess* probe)
{
    probe->start(QStringLiteral("which"), {QLatin1String(toolName)}, QIODevice::ReadWrite);
    probe->waitForFinished(-1);
    // Without the probe nothing is known against the tool: its own start will tell.
    return probe->error() == QProcess::FailedToStart || probe->exitCode() == 0;
}

} // namespace

bool KSBaseHandler::CommandHandlerSetLess::operator()(const CommandHandler* a,
                                                      const CommandHandler* b) const
{
    if (b == nullptr) {
        return false;
    }
    if (a == nullptr) {
        return true;
    }
    if (a->getCommandType() != b->getCommandType()) {
        return a->getCommandType() < b->getCommandType();
    }
    if (a->getId() != b->getId()) {
        return a->getId() < b->getId();
    }
    return Orvex::isAlphaLess(a->getCommand(), b->getCommand());
}

// Life

KSBaseHandler* KSBaseHandler::create(MainWindow* window)
{
    preCreate(window);
    auto* const engine = new KSBaseHandler(window);
    engine->postCreate(window);
    return engine;
}

void KSBaseHandler::preCreate(const MainWindow* window)
{
    if (window == nullptr) {
        Orvex::raise(Orvex::FactoryFailed("Null mainWindow"), "preCreate", sourceFile, __LINE__);
    }
    QProcess probe;
    if (!hasTool(&probe)) {
        Orvex::raise(Orvex::Critical("Cannot found ksbase2_cli in $PATH"), "preCreate", sourceFile,
                     __LINE__);
    }
    // As the bytes of the path: they need not be text in anybody's encoding.
    const std::string place = getSimplified(probe.readAllStandardOutput().toStdString());
    Orvex::console->print("Using ksbase2 found in: " + place, "");
}

KSBaseHandler::KSBaseHandler(MainWindow* window)
    : mainWindow(window)
    , process(new QProcess(this))
    , running(false)
    , refreshing(false)
    , monitoring(false)
    , replyBuffer(std::make_unique<ReplyBuffer>())
    , currentCommandID(0)
    , scheduler(nullptr)
    , commandTimer(nullptr)
    , commandSeconds(0)
    , logFile(QLatin1String(logFileName))
    , executing(nullptr)
    , chosen(nullptr)
    , delivering(nullptr)
    , closing(false)
{
    retryTimer.setInterval(startRetryInterval);
    connect(&retryTimer, &QTimer::timeout, this, &KSBaseHandler::startThread);
    scheduler = Scheduler::create(&thread, this);
    connect(this, SIGNAL(commandAdded()), this, SLOT(startThread()));
    connect(&thread, SIGNAL(finished()), this, SLOT(startThread()));

    commandTimer = new QTimer(this);
    commandTimer->setInterval(commandTick);
    connect(commandTimer, SIGNAL(timeout()), this, SLOT(onTimeout()));

    if (!logFile.open(QIODevice::WriteOnly | QIODevice::Text)) {
        Orvex::raise(Orvex::Critical("Unable to write file ksbase.log"), "KSBaseHandler",
                     sourceFile, __LINE__);
    }
    connect(process, SIGNAL(readyReadStandardError()), this, SLOT(processCommand()));
}

void KSBaseHandler::postCreate(MainWindow* /*window*/)
{
    running = true;
    // Before the start, so that a tool that cannot start comes to the same end.
    connect(process, SIGNAL(finished(int, QProcess::ExitStatus)), this, SLOT(onProcessFinished()));
    connect(process, SIGNAL(error(QProcess::ProcessError)), this, SLOT(onProcessFinished()));

    log(">>ksbase2_cli -s -x\n");
    process->setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    process->start(QLatin1String(toolName), {QStringLiteral("-s"), QStringLiteral("-x")},
                   QIODevice::ReadWrite);
    process->waitForStarted(-1);
    running = false;

    auto* const pollTimer = new QTimer(this);
    pollTimer->setInterval(pollInterval);
    connect(pollTimer, SIGNAL(timeout()), this, SLOT(refreshTamsaMap()));
    pollTimer->start();
}

void KSBaseHandler::destroy()
{
    preDestroy();
    delete this;
}

void KSBaseHandler::preDestroy()
{
    thread.quit();
    Tamsa* tamsa = nullptr;
    for (Orvex::ForEachControler<Tamsa*> loop(tamsa, getTamsas()); loop.next();) {
        tamsa->destroy();
    }
}

KSBaseHandler::~KSBaseHandler()
{
    process->disconnect(this);
    thread.disconnect(this);
    endWorker();
    // The end of its input lets the tool leave its board in order.
    process->closeWriteChannel();
    if (!process->waitForFinished(static_cast<int>(toolEndTime.count()))) {
        process->kill();
        process->waitForFinished(-1);
    }
}

/// Ends the worker, whatever it is doing; none is started any more.
void KSBaseHandler::endWorker()
{
    closing = true;
    // The worker may be waiting for this thread to do its work: a plain wait would never end.
    while (!thread.wait(QDeadlineTimer(workerServeStep))) {
        thread.quit();
        QCoreApplication::sendPostedEvents(&workerCalls, QEvent::MetaCall);
    }
    Orvex::takeOver(&thread);
}

void KSBaseHandler::onProcessFinished()
{
    if (closing) {
        return;
    }
    // The command in flight gets no reply, and the end is told once.
    closing = true;
    executing = nullptr;
    readPending(*process);
    Orvex::console->error("ksbase2 process has finished. This should not happen", "");
    printLines(process->readAllStandardError());
    printLines(process->readAllStandardOutput());
    // The exit destroys what threads still use: none may be in mid-step then.
    endWorker();
    std::exit(EXIT_FAILURE);
}

// Queue and execution

void KSBaseHandler::attach(CommandHandler* handler)
{
    commandHandlers.insert(handler);
    emit commandAdded();
}

void KSBaseHandler::detach(CommandHandler* handler)
{
    commandHandlers.erase(handler);
    if (handler != nullptr && handler == executing) {
        executing = nullptr;
    }
    settle(handler);
    if (commandHandlers.empty()) {
        currentCommandID = 0;
    }
}

/// Lets the worker finish with a handler that gets its reply just now.
void KSBaseHandler::settle(const CommandHandler* handler)
{
    if (handler != nullptr && handler == delivering) {
        // The worker may still be inside the handler's signal; it has nothing else left to do.
        thread.wait();
        Orvex::takeOver(&thread);
        delivering = nullptr;
    }
}

std::uint64_t KSBaseHandler::getCurrentCommandID() const
{
    return currentCommandID++;
}

CommandHandlers KSBaseHandler::getCommandHandlers() const
{
    return CommandHandlers(
        Orvex::SetCollection<CommandHandler*, CommandHandlerSetLess>(commandHandlers));
}

void KSBaseHandler::startThread()
{
    // In this order: while the worker runs, a reply may be being written.
    if (closing || thread.isRunning() || getCommandHandlers().getPendings().isEmpty()) {
        retryTimer.stop();
        return;
    }
    Orvex::takeOver(&thread);
    delivering = nullptr;
    if (startWorker()) {
        retryTimer.stop();
    } else if (!retryTimer.isActive()) {
        Orvex::console->error("No command can be sent: the system gives no thread for it. "
                              "It is tried again every second",
                              "");
        retryTimer.start();
    }
}

/// False when the system lacks what the worker needs.
bool KSBaseHandler::startWorker()
{
    // The thread ends its dispatcher when it ends itself, which may still be under way.
    thread.wait();
    if (thread.eventDispatcher() == nullptr) {
        thread.setEventDispatcher(new WorkerEventDispatcher);
    }
    chooseAhead();
    Orvex::handOver(&thread);
    thread.start(QThread::InheritPriority);
    // It waits for this thread before it can end, so one that does not run has not been started.
    const bool isStarted = thread.isRunning();
    if (!isStarted) {
        // Left standing, the choice would be made under the next worker's hands.
        QCoreApplication::removePostedEvents(&workerCalls, QEvent::MetaCall);
    }
    return isStarted;
}

/// Makes the choice that the worker will ask for while the worker is still starting. Not now: what
/// is more urgent and created in the same turn goes first.
void KSBaseHandler::chooseAhead()
{
    choicesAhead.tryAcquire(choicesAhead.available());
    QMetaObject::invokeMethod(
        &workerCalls,
        [this] {
            try {
                chooseFirstPending();
            } catch (const std::bad_alloc&) {
                // The worker asks for it, since none is ahead.
                return;
            }
            Orvex::handOver(&choicesAhead);
            choicesAhead.release();
        },
        Qt::QueuedConnection);
}

void KSBaseHandler::chooseFirstPending()
{
    executing = closing ? nullptr : getCommandHandlers().getPendings().getFirst();
    chosen = executing;
}

template <class Work>
void KSBaseHandler::callOnEngineThread(Work work)
{
    std::exception_ptr failure;
    QMetaObject::invokeMethod(&workerCalls,
                              Orvex::HandedWork(
                                  [&work, &failure] {
                                      try {
                                          work();
                                      } catch (...) {
                                          failure = std::current_exception();
                                      }
                                  },
                                  &failure),
                              Qt::BlockingQueuedConnection);
    Orvex::takeOver(&failure);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

CommandHandler* KSBaseHandler::chooseCommandHandler()
{
    if (!choicesAhead.tryAcquire()) {
        callOnEngineThread([this] {
            // It may have been made since.
            choicesAhead.tryAcquire();
            chooseFirstPending();
        });
    }
    Orvex::takeOver(&choicesAhead);
    return chosen;
}

void KSBaseHandler::executeCommand(CommandHandler* handler)
{
    if (isRunning()) {
        Orvex::raise(Orvex::InvalidRequest("Already running"), "executeCommand", sourceFile,
                     __LINE__);
    }
    if (handler == nullptr) {
        Orvex::raise(Orvex::Fatal("Null commandHandler"), "executeCommand", sourceFile, __LINE__);
    }

    QEventLoop loop;
    std::string command;
    bool hasBegun = false;
    callOnEngineThread([&] {
        // Since the choice the handler may have left the queue, and the end may have begun.
        hasBegun = !closing && handler == executing;
        if (hasBegun) {
            command = handler->getCommand();
            beginCommand(&loop);
        }
    });
    if (!hasBegun) {
        return;
    }

    loop.exec();

    QString reply;
    CommandHandler* receiver = nullptr;
    callOnEngineThread([&] { receiver = endCommand(&reply); });
    if (receiver == nullptr) {
        return;
    }
    if (reply.isEmpty()) {
        Orvex::raise(Orvex::Fatal("Empty result").with("command", command), "executeCommand",
                     sourceFile, __LINE__);
    }
    deliver(receiver, std::move(reply));
}

/// Gives the reply to its command. Worker thread.
void KSBaseHandler::deliver(CommandHandler* receiver, QString reply)
{
    try {
        receiver->setResult(Orvex::toAscii(std::move(reply)));
    } catch (const std::bad_alloc&) {
        // A command without a reply would be sent again.
        reply = QString();
        receiver->setResult(lostReply);
    }
}

/// Writes the command in flight to the tool, with the loop connected to the end of its reply.
void KSBaseHandler::beginCommand(QEventLoop* loop)
{
    running = true;
    replyBuffer->clear();
    // Only now: a late mark of the command before would end the new wait.
    connect(this, SIGNAL(commandDone()), loop, SLOT(quit()));
    const QByteArray bytes = QByteArray::fromStdString(executing->getCommand()) + '\n';
    log('>' + bytes);
    process->write(bytes);
    commandSeconds = 0;
    commandTimer->start();
    executing->setRunning(true);
}

/// Takes the reply of the command in flight. Returns who gets it, null when the handler has left.
CommandHandler* KSBaseHandler::endCommand(QString* reply)
{
    delivering = std::exchange(executing, nullptr);
    if (delivering != nullptr) {
        delivering->setRunning(false);
    }
    commandTimer->stop();
    const bool isLost = replyBuffer->isGivenUp();
    *reply = replyBuffer->take();
    if (isLost) {
        *reply = QString::fromLatin1(lostReply);
    }
    running = false;
    return delivering;
}

const QString& KSBaseHandler::getData() const
{
    return replyBuffer->getText();
}

/// Does the work, and when the memory does not suffice does it once more without the reply that has
/// been gathered so far.
template <class Work>
void KSBaseHandler::doWithinMemory(Work work)
{
    try {
        work();
    } catch (const std::bad_alloc&) {
        giveReplyUp();
        work();
    }
}

void KSBaseHandler::giveReplyUp()
{
    const bool isNew = !replyBuffer->isGivenUp();
    replyBuffer->giveUp();
    if (isNew) {
        Orvex::console->error("The reply of the board tool does not fit into the memory. Nobody "
                              "knows what it said, and its command counts as failed",
                              "");
    }
}

void KSBaseHandler::log(const QByteArray& bytes)
{
    // As bytes: the transcript holds exactly what went over the pipes.
    logFile.write(bytes);
    logFile.flush();
}

void KSBaseHandler::processCommand()
{
    QByteArray bytes;
    bool hasEnded = false;
    doWithinMemory([&] { bytes = process->readAllStandardError(); });
    doWithinMemory([&] { log(bytes); });
    doWithinMemory([&] { hasEnded = replyBuffer->add(bytes); });
    if (hasEnded) {
        emit commandDone();
    }
}

void KSBaseHandler::onTimeout()
{
    CommandHandler* const handler = getCommandHandlers().getRunnings().getFirst();
    if (handler == nullptr) {
        return;
    }
    ++commandSeconds;
    if (!mainWindow) {
        return;
    }
    const QTime time = QTime(0, 0).addSecs(static_cast<int>(commandSeconds % secondsPerDay));
    mainWindow->statusBar()->showMessage(QStringLiteral("Executing command '%1' (%2)")
                                             .arg(Orvex::getReadable(handler->getCommand()),
                                                  time.toString(QStringLiteral("hh:mm:ss"))),
                                         static_cast<int>(commandStatusTime.count()));
}

std::string KSBaseHandler::exchange(CommandHandler::CommandType type, const std::string& command)
{
    const OwnedCommandHandler handler(CommandHandler::create(type, command, this));
    return waitReply(handler.get());
}

/// Waits for the reply to a command. Throws when there is none to judge: the engine has been
/// destroyed in the wait, or the application has left its event loops.
std::string KSBaseHandler::waitReply(CommandHandler* handler)
{
    const QPointer<KSBaseHandler> self(this);
    waitCommandHandlerReady(handler);
    if (self) {
        settle(handler);
    }
    if (!self || !handler->hasFinished()) {
        Orvex::raise(Orvex::InvalidRequest("The wait for a reply has ended without one"),
                     "waitReply", sourceFile, __LINE__);
    }
    return handler->getResult();
}

std::string KSBaseHandler::sendCommand(const std::string& command)
{
    if (!Orvex::isDebug()) {
        return {};
    }
    const OwnedCommandHandler handler(
        CommandHandler::create(CommandHandler::CommandType::Control, command, this));
    std::string reply = waitReply(handler.get());
    commandTimer->stop();
    return reply;
}

// Boards

Orvex::Collection<Tamsa*> KSBaseHandler::getTamsas() const
{
    return Orvex::MapCollection<std::string, Tamsa*, std::less<std::string>>(tamsas);
}

Tamsa* KSBaseHandler::getTamsa(const std::string& name) const
{
    const auto found = tamsas.find(name);
    return found == tamsas.end() ? nullptr : found->second;
}

int KSBaseHandler::getIndex(const std::string& name) const
{
    int index = 0;
    Tamsa* tamsa = nullptr;
    for (Orvex::ForEachControler<Tamsa*> loop(tamsa, getTamsas()); loop.next();) {
        if (tamsa->getName() == name) {
            return index;
        }
        ++index;
    }
    return -1;
}

void KSBaseHandler::attach(Tamsa* tamsa)
{
    tamsas[tamsa->getName()] = tamsa;
}

void KSBaseHandler::detach(Tamsa* tamsa)
{
    tamsas.erase(tamsa->getName());
}

void KSBaseHandler::refreshTamsaMap()
{
    if (isRefreshing()) {
        return;
    }
    refreshing = true;
    if (auto* const timer = qobject_cast<QTimer*>(sender())) {
        timer->setInterval(pollInterval);
    }
    mirrorTool();
    refreshing = false;
}

/// One pass over the listing of boards.
void KSBaseHandler::mirrorTool()
{
    const std::string listing = exchange(CommandHandler::CommandType::Refresh, "board list");

    std::list<Tamsa*> presentTamsas;
    const std::list<Tamsa*> newTamsas = mirrorListing(listing, &presentTamsas);
    const bool hasNew = connectTamsas(newTamsas);
    const bool hasGone = disconnectTamsas(presentTamsas);
    if ((hasNew || hasGone) && mainWindow && mainWindow->getFolio() != nullptr) {
        mainWindow->getFolio()->refreshCardComboBox();
    }
}

/// Makes the boards that the listing names for the first time and returns them; `presentTamsas`
/// gets every board of the listing, both in the order of the lines.
std::list<Tamsa*> KSBaseHandler::mirrorListing(const std::string& reply,
                                               std::list<Tamsa*>* presentTamsas)
{
    std::list<Tamsa*> newTamsas;
    selectedTamsa = nullptr;
    for (const ListedBoard& board : parseBoardListing(reply)) {
        Tamsa* tamsa = getTamsa(board.name);
        if (tamsa == nullptr) {
            tamsa = Tamsa::create(board.name, this);
            newTamsas.push_back(tamsa);
        }
        presentTamsas->push_back(tamsa);
        if (board.isSelected) {
            selectedTamsa = tamsa;
        }
    }
    return newTamsas;
}

/// Brings the new boards up, in the order of their lines. Returns whether there were any.
bool KSBaseHandler::connectTamsas(const std::list<Tamsa*>& newTamsas)
{
    Tamsa* tamsa = nullptr;
    const Orvex::ListCollection<Tamsa*> boards(newTamsas);
    for (Orvex::ForEachControler<Tamsa*> loop(tamsa, boards); loop.next();) {
        Orvex::console->print("Connected " + tamsa->getName(), "");
        tamsa->initialize();
    }
    return !boards.isEmpty();
}

/// Forgets the boards that the listing does not name any more. Returns whether there were any.
bool KSBaseHandler::disconnectTamsas(const std::list<Tamsa*>& presentTamsas)
{
    bool hasGone = false;
    Tamsa* tamsa = nullptr;
    const Orvex::ListCollection<Tamsa*> present(presentTamsas);
    for (Orvex::ForEachControler<Tamsa*> loop(tamsa, getTamsas()); loop.next();) {
        if (Orvex::FromCollection<Tamsa*>(present, tamsa).isEmpty()) {
            Orvex::console->print("Disconnected " + tamsa->getName(), "");
            tamsa->destroy();
            hasGone = true;
        }
    }
    return hasGone;
}

Tamsa* KSBaseHandler::getSelectedTamsa() const
{
    return selectedTamsa;
}

void KSBaseHandler::select(const std::string& name)
{
    const bool isSelected = sendSetting("board select " + Orvex::getLabel(getIndex(name)));
    if (isSelected) {
        selectedTamsa = getTamsa(name);
    }
    tellVerdict(isSelected, "Board succesfully selected", "Selection failed");
}

void KSBaseHandler::initialize(const std::string& name)
{
    if (name.empty()) {
        return;
    }
    const std::string previousName = selectedTamsa ? selectedTamsa->getName() : std::string();
    select(name);
    setMode("Jtag only");
    setClockBit(true);
    setResetBit(true);
    setResetBit(false);
    if (previousName != name) {
        select(previousName);
    }
}

// Operations

/// Sends a setting and returns whether the tool accepted it.
bool KSBaseHandler::sendSetting(const std::string& command)
{
    return isAccepted(exchange(CommandHandler::CommandType::Control, command));
}

std::string KSBaseHandler::_getMode()
{
    return getFirstLine(exchange(CommandHandler::CommandType::Control, "board get mode"));
}

// A reading is an exchange with the board, so the real work is not const; for the caller it is.
std::string KSBaseHandler::getMode() const
{
    return const_cast<KSBaseHandler*>(this)->_getMode();
}

bool KSBaseHandler::_getForceBit()
{
    const std::string reply = exchange(CommandHandler::CommandType::Control, "board get force_bit");
    switch (getForceBitState(reply)) {
    case ForceBitState::Refused:
        Orvex::console->error(getForceBitError(reply), "");
        return false;
    case ForceBitState::Set:
        return true;
    case ForceBitState::NotSet:
        return false;
    case ForceBitState::Unknown:
        break;
    }
    Orvex::raise(Orvex::Fatal("Should not be here"), "_getForceBit", sourceFile, __LINE__);
}

bool KSBaseHandler::getForceBit() const
{
    return const_cast<KSBaseHandler*>(this)->_getForceBit();
}

std::string KSBaseHandler::_getMonitor(unsigned long index)
{
    if (isMonitoring()) {
        return {};
    }
    monitoring = true;
    std::string reply = exchange(CommandHandler::CommandType::Monitor,
                                 "board monitor get " + Orvex::getLabel(index));
    monitoring = false;
    return reply;
}

std::string KSBaseHandler::getMonitor(unsigned long index) const
{
    return const_cast<KSBaseHandler*>(this)->_getMonitor(index);
}

bool KSBaseHandler::getResetBit() const
{
    return selectedTamsa && selectedTamsa->getResetBit();
}

bool KSBaseHandler::getClockBit() const
{
    return selectedTamsa && selectedTamsa->getClockBit();
}

void KSBaseHandler::setMode(const std::string& mode)
{
    tellVerdict(sendSetting("board set mode '" + mode + "'"), "Mode successfully set to " + mode,
                "Mode change failed");
}

void KSBaseHandler::setResetBit(bool isOn)
{
    const std::string word = getOnOff(isOn);
    const bool isSet = sendSetting("board set reset " + word);
    if (isSet && selectedTamsa) {
        selectedTamsa->setResetBit(isOn);
    }
    tellVerdict(isSet, "Reset bit successfully set to " + word, "Reset failed");
}

void KSBaseHandler::setClockBit(bool isOn)
{
    const std::string word = getOnOff(isOn);
    const bool isSet = sendSetting("board set jtag_clock " + word);
    if (isSet && selectedTamsa) {
        selectedTamsa->setClockBit(isOn);
    }
    tellVerdict(isSet, "Clock bit successfully set to " + word, "Setting of clock bit failed");
}

void KSBaseHandler::setForceBit(bool isOn)
{
    const std::string word = getOnOff(isOn);
    tellVerdict(sendSetting("board set force_bit " + word), "Force bit successfully set to " + word,
                "Setting of force bit failed");
}

void KSBaseHandler::programFlash(const std::string& path)
{
    tellVerdict(isFlashProgrammed(exchange(CommandHandler::CommandType::Transfer,
                                           "board spi flash program " + path)),
                "Program flash memory succeeded", "Program flash memory failed");
}

void KSBaseHandler::sendBitstream(const std::string& path)
{
    tellVerdict(isBitstreamLoaded(
                    exchange(CommandHandler::CommandType::Transfer, "chip bitstream load " + path)),
                "Bitstream successfully sent", "Bitstream failed");
}

void KSBaseHandler::setErrorHandler(const std::string& name, const std::string& outfilepath)
{
    std::string command = "chip bitstream err_handler select " + name;
    if (!outfilepath.empty()) {
        command += " outfilepath=" + outfilepath;
    }
    tellVerdict(sendSetting(command), "Error handler successfully configured",
                "Error handler configuration failed");
}

// Introspection

std::string KSBaseHandler::getAlias() const
{
    return "KSBaseHandler";
}

std::string KSBaseHandler::_getLabel() const
{
    return getAlias();
}

bool KSBaseHandler::_hasRecord() const
{
    return true;
}

Orvex::Slot* KSBaseHandler::_getSlot() const
{
    return new Orvex::StandardSlot<KSBaseHandler*>(this);
}

Orvex::Record* KSBaseHandler::_getRecord() const
{
    return makeRecord(*this, "KSBaseHandler");
}

} // namespace Board
