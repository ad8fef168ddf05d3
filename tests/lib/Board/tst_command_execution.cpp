#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <Board/Scheduler.h>
#include <foundation/Exception.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Fatal.h>
#include <foundation/InvalidRequest.h>

#include <QFile>
#include <QSignalSpy>
#include <QStatusBar>
#include <QThread>
#include <QTimer>

#include <memory>
#include <stdexcept>

using Board::CommandHandler;
using Test::Bench;
using Test::CommandType;

namespace
{

const char command[] = "board set force_bit on";
const char otherCommand[] = "board set force_bit off";

} // namespace

/// How a queued command reaches the tool and how its reply comes back.
class TestCommandExecution : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void anEmptyQueueStartsNothing();
    void theEndOfTheWorkerStartsTheNextCommand();
    void theReplyIsEverythingWithItsMark();
    void aFailureEndsTheWaitLikeASuccess();
    void theChunksOfAReplyDoNotMatter_data();
    void theChunksOfAReplyDoNotMatter();
    void aMarkWithinALineEndsTheReply();
    void textAfterTheMarkMayBelongToTheReply();
    void textBetweenCommandsIsInTheTranscriptOnly();
    void textOfTheStartIsCleared();
    void aMarkThatComesUnaskedEndsNoLaterWait();
    void aNulCutsItsChunkButNotTheTranscript();
    void bytesPassUnchangedBothWays();
    void aLargeReplyComesWhole();
    void theMarkIsAnnouncedAtEachChunkAfterIt();
    void aCommandRunsWithTheFlagSet();
    void numbersStartAgainWhenTheQueueStoodEmpty();
    void aHandlerAliveKeepsTheNumbersGoing();
    void detachingNothingFromAnEmptyQueueResetsTheNumber();
    void attachAnnouncesEachHandler();
    void aMoreUrgentCommandOfTheSameTurnGoesFirst();
    void aLongCommandLetsControlGoBeforeThePoll();
    void theStatusBarCountsTheSeconds();
    void eachCommandCountsFromItsStart();
    void theStatusBarStartsAgainAfterADay();
    void aTickWithoutARunningCommandShowsNothing();
    void theStatusTextIsShownReadable();
    void aShortCommandShowsNothing();
    void outsideDebugModeNothingIsSent();
    void inDebugModeARawCommandIsAnswered();
    void anEmptyRawCommandIsRefused();
    void aRawCommandIsOfTheFirstType();
    void aRawCommandStopsTheTickOnItsReturn();
    void aSecondExecutionIsRefused();
    void aRefusedExecutionIsPrintedAndLeavesTheCommandPending();
    void aNullHandlerIsRefused();
    void aFailureOnTheWorkerIsPrintedAndTheQueueMovesOn_data();
    void aFailureOnTheWorkerIsPrintedAndTheQueueMovesOn();
    void anEmptyResultIsReportedAndSentAgain();
    void theSchedulerRefusesItsArguments_data();
    void theSchedulerRefusesItsArguments();
    void theSchedulerHasOneSlot();
    void theSchedulerLaunchesWhenItsThreadStarts();
    void aSilentToolLeavesTheWindowAlive();
    void manyCommandsAreEachAnsweredOnce();

private:
    void setFaults(const QString& faults)
    {
        bench->setScenario(Bench::board("Aurora") + faults);
        panel->run(CommandType::Refresh, "board list");
        bench->takeJournal();
    }
    CommandHandler* create(CommandType type, const std::string& text)
    {
        return CommandHandler::create(type, text, panel->getEngine());
    }
    /// The worker, which is no child of the engine, as it shows itself in a reply.
    QThread* getWorker()
    {
        QThread* worker = nullptr;
        CommandHandler* const handler = create(CommandType::Control, command);
        connect(
            handler, &CommandHandler::resultReady, handler,
            [&worker] { worker = QThread::currentThread(); }, Qt::DirectConnection);
        Board::waitCommandHandlerReady(handler);
        handler->destroy();
        return worker;
    }
    /// The timer that counts the seconds of a command.
    QTimer* getTick() const
    {
        QTimer* tick = nullptr;
        for (QTimer* const timer : panel->getEngine()->findChildren<QTimer*>()) {
            tick = timer == panel->getPollTimer() ? tick : timer;
        }
        return tick;
    }
    QString run(const char* text)
    {
        return QString::fromStdString(panel->run(CommandType::Control, text));
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::Panel> panel;
};

void TestCommandExecution::init()
{
    bench = std::make_unique<Bench>();
    bench->setScenario(Bench::board("Aurora"));
    panel = std::make_unique<Test::Panel>();
    bench->takeJournal();
}

void TestCommandExecution::cleanup()
{
    bench->release();
    panel.reset();
    bench.reset();
}

void TestCommandExecution::anEmptyQueueStartsNothing()
{
    QThread* const worker = getWorker();
    worker->wait();
    QCoreApplication::processEvents();
    int starts = 0;
    int ends = 0;
    // Counted here and not where they are told, on the worker.
    QObject counter;
    connect(worker, &QThread::started, &counter, [&starts] { ++starts; });
    connect(worker, &QThread::finished, &counter, [&ends] { ++ends; });
    panel->getEngine()->startThread();
    QVERIFY(!worker->isRunning());

    run(command);
    QTRY_COMPARE(ends, 1);
    // The end of the last command has been served: nothing is left to start for.
    QCoreApplication::processEvents();
    QVERIFY(!worker->isRunning());
    QCOMPARE(starts, 1);
}

void TestCommandExecution::theEndOfTheWorkerStartsTheNextCommand()
{
    QThread* const worker = getWorker();
    // Only a connection that is there, and there once, can be taken away once.
    QVERIFY(
        QObject::disconnect(worker, SIGNAL(finished()), panel->getEngine(), SLOT(startThread())));
    QVERIFY(
        !QObject::disconnect(worker, SIGNAL(finished()), panel->getEngine(), SLOT(startThread())));
    QVERIFY(QObject::connect(worker, SIGNAL(finished()), panel->getEngine(), SLOT(startThread())));
    worker->wait();
    QCoreApplication::processEvents();

    int starts = 0;
    QObject counter;
    connect(worker, &QThread::started, &counter, [&starts] { ++starts; });
    CommandHandler* const first = create(CommandType::Control, command);
    CommandHandler* const second = create(CommandType::Control, otherCommand);
    Board::waitCommandHandlerReady(second);
    QTRY_COMPARE(starts, 2);
    first->destroy();
    second->destroy();
}

void TestCommandExecution::theReplyIsEverythingWithItsMark()
{
    setFaults(Bench::reply(command, "  first\n\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(run(command), QString("  first\n\nCOMMAND SUCCEEDED\n"));
}

void TestCommandExecution::aFailureEndsTheWaitLikeASuccess()
{
    setFaults(Bench::reply(command, "Error: no\nCOMMAND FAILED\n"));
    CommandHandler* const handler = create(CommandType::Control, command);
    Board::waitCommandHandlerReady(handler);
    QVERIFY(handler->hasFinished());
    QCOMPARE(handler->getResult(), std::string("Error: no\nCOMMAND FAILED\n"));
    handler->destroy();
}

void TestCommandExecution::theChunksOfAReplyDoNotMatter_data()
{
    QTest::addColumn<int>("at");
    // Each byte of the whole answer, the ones of its mark among them.
    const int length = int(strlen("OK\nCOMMAND SUCCEEDED"));
    for (int at = 1; at < length; ++at) {
        QTest::addRow("cut at %d", at) << at;
    }
}

void TestCommandExecution::theChunksOfAReplyDoNotMatter()
{
    QFETCH(int, at);
    const QString whole = run(command);
    setFaults(Bench::fault(command, QString("kind = \"split\"\nat = [%1]\npause_ms = 5").arg(at)));
    CommandHandler* const handler = create(CommandType::Control, command);
    Board::waitCommandHandlerReady(handler);
    // What comes after the mark may come late: the reply is whole up to its mark in any case.
    const QString reply = QString::fromStdString(handler->getResult());
    handler->destroy();
    QVERIFY(whole.startsWith(reply));
    QVERIFY(reply.contains("COMMAND SUCCEEDED"));
}

void TestCommandExecution::aMarkWithinALineEndsTheReply()
{
    setFaults(Bench::reply(command, "xCOMMAND FAILEDx"));
    QCOMPARE(run(command), QString("xCOMMAND FAILEDx"));
}

void TestCommandExecution::textAfterTheMarkMayBelongToTheReply()
{
    setFaults(Bench::reply(command, "COMMAND SUCCEEDED\nand more\n"));
    QCOMPARE(run(command), QString("COMMAND SUCCEEDED\nand more\n"));
}

void TestCommandExecution::textBetweenCommandsIsInTheTranscriptOnly()
{
    setFaults(Bench::reply(command, "COMMAND SUCCEEDED\n"));
    QCOMPARE(run(command), QString("COMMAND SUCCEEDED\n"));
    // Said aside of any command: written by the tool when the answer was over.
    bench->setScenario(Bench::board("Aurora") +
                       Bench::fault(command, "kind = \"after\"\ntext = \"aside\\n\"\ntimes = 0"));
    panel->run(CommandType::Refresh, "board list");
    run(command);
    QTRY_VERIFY(bench->readFile("ksbase.log").contains("aside"));
    QVERIFY(!run(otherCommand).contains("aside"));
}

void TestCommandExecution::textOfTheStartIsCleared()
{
    panel.reset();
    bench->setTool("#!/bin/sh\necho 'good morning COMMAND SUCCEEDED' >&2\n"
                   "while read -r line; do echo \"$line COMMAND SUCCEEDED\" >&2; done\n");
    panel = std::make_unique<Test::Panel>();
    QTRY_VERIFY(bench->readFile("ksbase.log").contains("good morning"));
    QCOMPARE(run(command), QString(command) + " COMMAND SUCCEEDED\n");
}

void TestCommandExecution::aMarkThatComesUnaskedEndsNoLaterWait()
{
    panel.reset();
    bench->setTool("#!/bin/sh\n"
                   "while read -r line; do echo \"$line COMMAND SUCCEEDED\" >&2\n"
                   "echo 'unasked COMMAND FAILED' >&2; done\n");
    panel = std::make_unique<Test::Panel>();
    for (int round = 0; round < 20; ++round) {
        QTRY_COMPARE(bench->readFile("ksbase.log").count("unasked"), round + 1);
        const QString text = QString("command %1").arg(round);
        const QString reply = run(qPrintable(text));
        QVERIFY2(reply.startsWith(text + " COMMAND SUCCEEDED\n"), qPrintable(reply));
    }
}

void TestCommandExecution::aNulCutsItsChunkButNotTheTranscript()
{
    panel.reset();
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line; printf 'seen\\000unseen\\n' >&2; touch written\n"
                   "while [ ! -e released ]; do sleep 0.01; done\n"
                   "echo 'COMMAND SUCCEEDED' >&2; read -r line\n");
    panel = std::make_unique<Test::Panel>();
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(bench->readFile("ksbase.log").contains("unseen"));
    bench->writeFile("released", {});
    Board::waitCommandHandlerReady(handler);
    QCOMPARE(handler->getResult(), std::string("seenCOMMAND SUCCEEDED\n"));
    QVERIFY(bench->readFile("ksbase.log").contains(QByteArray("seen\0unseen\n", 12)));
    handler->destroy();
}

void TestCommandExecution::bytesPassUnchangedBothWays()
{
    panel.reset();
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line; printf '%s' \"$line\" > received\n"
                   "{ cat received; echo ' COMMAND SUCCEEDED'; } >&2; read -r line\n");
    panel = std::make_unique<Test::Panel>();
    QByteArray bytes = "x";
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n' && byte != '\\') {
            bytes += static_cast<char>(byte);
        }
    }
    bytes += "x";
    const std::string reply = panel->run(CommandType::Control, bytes.toStdString());
    QCOMPARE(bench->readFile("received"), bytes);
    QCOMPARE(QByteArray::fromStdString(reply), bytes + " COMMAND SUCCEEDED\n");
}

void TestCommandExecution::aLargeReplyComesWhole()
{
    panel.reset();
    bench->writeFile("large", QByteArray(10 << 20, 'x') + "\nCOMMAND SUCCEEDED\n");
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line; cat large >&2; read -r line\n");
    panel = std::make_unique<Test::Panel>();
    const std::string reply = panel->run(CommandType::Control, command);
    QVERIFY(QByteArray::fromStdString(reply) == bench->readFile("large"));
}

void TestCommandExecution::theMarkIsAnnouncedAtEachChunkAfterIt()
{
    panel.reset();
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "for piece in one 'two COMMAND FAILED' three four; do\n"
                   "while [ ! -e \"$piece\" ]; do sleep 0.01; done\necho \"$piece\" >&2; done\n"
                   "read -r line\n");
    panel = std::make_unique<Test::Panel>();
    QSignalSpy announced(panel->getEngine(), SIGNAL(commandDone()));
    // No command runs: the mark of the listing has gone with its reply.
    const QStringList pieces{"one", "two COMMAND FAILED", "three", "four"};
    QString gathered;
    for (int index = 0; index < pieces.size(); ++index) {
        bench->writeFile(pieces.at(index), {});
        gathered += pieces.at(index) + "\n";
        QTRY_COMPARE(panel->getEngine()->getData(), gathered);
        QCOMPARE(announced.count(), index);
    }
}

void TestCommandExecution::aCommandRunsWithTheFlagSet()
{
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    QVERIFY(panel->getEngine()->isRunning());
    bench->release();
    Board::waitCommandHandlerReady(handler);
    QVERIFY(!panel->getEngine()->isRunning());
    QVERIFY(panel->getEngine()->getData().isEmpty());
    handler->destroy();
}

void TestCommandExecution::numbersStartAgainWhenTheQueueStoodEmpty()
{
    CommandHandler* const first = create(CommandType::Control, command);
    CommandHandler* const second = create(CommandType::Control, command);
    QCOMPARE(first->getId(), std::uint64_t(0));
    QCOMPARE(second->getId(), std::uint64_t(1));
    first->destroy();
    second->destroy();
    CommandHandler* const third = create(CommandType::Control, command);
    QCOMPARE(third->getId(), std::uint64_t(0));
    third->destroy();
}

void TestCommandExecution::aHandlerAliveKeepsTheNumbersGoing()
{
    CommandHandler* const finished = create(CommandType::Control, command);
    Board::waitCommandHandlerReady(finished);
    CommandHandler* const next = create(CommandType::Control, command);
    QCOMPARE(next->getId(), std::uint64_t(1));
    next->destroy();
    CommandHandler* const after = create(CommandType::Control, command);
    QCOMPARE(after->getId(), std::uint64_t(2));
    after->destroy();
    finished->destroy();
}

void TestCommandExecution::detachingNothingFromAnEmptyQueueResetsTheNumber()
{
    Board::KSBaseHandler* const engine = panel->getEngine();
    QCOMPARE(engine->getCurrentCommandID(), std::uint64_t(0));
    QCOMPARE(engine->getCurrentCommandID(), std::uint64_t(1));
    engine->detach(static_cast<CommandHandler*>(nullptr));
    QCOMPARE(engine->getCurrentCommandID(), std::uint64_t(0));
    engine->detach(static_cast<CommandHandler*>(nullptr));
}

void TestCommandExecution::attachAnnouncesEachHandler()
{
    QSignalSpy added(panel->getEngine(), SIGNAL(commandAdded()));
    CommandHandler* const handler = create(CommandType::Control, command);
    QCOMPARE(added.count(), 1);
    // Also one that is there already.
    panel->getEngine()->attach(handler);
    QCOMPARE(added.count(), 2);
    QCOMPARE(panel->getEngine()->getCommandHandlers().getCount(), 1UL);
    handler->destroy();
}

void TestCommandExecution::aMoreUrgentCommandOfTheSameTurnGoesFirst()
{
    bench->takeJournal();
    CommandHandler* const poll = create(CommandType::Refresh, "board list");
    // The worker has been started for the poll: what it sends is not chosen before this turn is
    // over.
    CommandHandler* const urgent = create(CommandType::Control, command);
    Board::waitCommandHandlerReady(poll);
    QVERIFY(urgent->hasFinished());
    QCOMPARE(bench->takeJournal(), QStringList({command, "board list"}));
    poll->destroy();
    urgent->destroy();
}

void TestCommandExecution::aLongCommandLetsControlGoBeforeThePoll()
{
    setFaults(bench->hold("chip bitstream load"));
    CommandHandler* const load = create(CommandType::Transfer, "chip bitstream load file");
    QTRY_VERIFY(load->isRunning());
    CommandHandler* const poll = create(CommandType::Refresh, "board list");
    CommandHandler* const button = create(CommandType::Control, command);
    bench->release();
    QTRY_VERIFY(poll->hasFinished());
    QCOMPARE(bench->takeJournal(),
             QStringList({"chip bitstream load file", command, "board list"}));
    for (CommandHandler* const handler : {load, poll, button}) {
        handler->destroy();
    }
}

void TestCommandExecution::theStatusBarCountsTheSeconds()
{
    setFaults(bench->hold(command));
    QStatusBar* const bar = panel->getWindow()->statusBar();
    QStringList shown;
    connect(bar, &QStatusBar::messageChanged, bar, [&shown](const QString& text) {
        // What vanishes by itself in between is told as an empty text.
        if (!text.isEmpty()) {
            shown += text;
        }
    });
    CommandHandler* const handler = create(CommandType::Control, command);
    const QString text = QString("Executing command '%1' (%2)").arg(command);
    // The tick itself: a second passes twice.
    QTRY_VERIFY(shown.size() >= 2);
    QCOMPARE(shown.mid(0, 2), QStringList({text.arg("00:00:01"), text.arg("00:00:02")}));
    // Each text stands longer than the tick, so that there is no gap.
    QCOMPARE(bar->findChild<QTimer*>()->interval(), 1200);
    QCOMPARE(getTick()->interval(), 1000);
    bench->release();
    Board::waitCommandHandlerReady(handler);
    // The text goes by itself, soon after the end of the command.
    QTRY_COMPARE(bar->currentMessage(), QString());
    handler->destroy();
}

void TestCommandExecution::eachCommandCountsFromItsStart()
{
    setFaults(bench->hold(command));
    for (int round = 0; round < 2; ++round) {
        CommandHandler* const handler = create(CommandType::Control, command);
        QTRY_VERIFY(handler->isRunning());
        panel->getEngine()->onTimeout();
        QVERIFY(panel->getWindow()->statusBar()->currentMessage().endsWith("(00:00:01)"));
        bench->release();
        Board::waitCommandHandlerReady(handler);
        handler->destroy();
        bench->holdAgain();
    }
}

void TestCommandExecution::theStatusBarStartsAgainAfterADay()
{
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    const int secondsPerDay = 24 * 60 * 60;
    for (int second = 0; second < secondsPerDay - 1; ++second) {
        panel->getEngine()->onTimeout();
    }
    const QString shown = panel->getWindow()->statusBar()->currentMessage();
    QVERIFY2(shown.endsWith("(23:59:59)"), qPrintable(shown));
    panel->getEngine()->onTimeout();
    QVERIFY(panel->getWindow()->statusBar()->currentMessage().endsWith("(00:00:00)"));
    bench->release();
    Board::waitCommandHandlerReady(handler);
    handler->destroy();
}

void TestCommandExecution::aTickWithoutARunningCommandShowsNothing()
{
    panel->getEngine()->onTimeout();
    QCOMPARE(panel->getWindow()->statusBar()->currentMessage(), QString());
    // Nor does it count: the next command begins at its first second.
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    panel->getEngine()->onTimeout();
    QVERIFY(panel->getWindow()->statusBar()->currentMessage().endsWith("(00:00:01)"));
    bench->release();
    Board::waitCommandHandlerReady(handler);
    handler->destroy();
}

void TestCommandExecution::theStatusTextIsShownReadable()
{
    setFaults(bench->hold("board set mode"));
    CommandHandler* const handler = create(CommandType::Control, "board set mode 'm\u00e9 %1 <b>'");
    QTRY_VERIFY(handler->isRunning());
    panel->getEngine()->onTimeout();
    QCOMPARE(panel->getWindow()->statusBar()->currentMessage(),
             QString("Executing command 'board set mode 'm\u00e9 %1 <b>'' (00:00:01)"));
    bench->release();
    Board::waitCommandHandlerReady(handler);
    handler->destroy();
}

void TestCommandExecution::aShortCommandShowsNothing()
{
    QSignalSpy shown(panel->getWindow()->statusBar(), &QStatusBar::messageChanged);
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    // The tick runs only while a command does.
    QVERIFY(getTick()->isActive());
    bench->release();
    Board::waitCommandHandlerReady(handler);
    QVERIFY(!getTick()->isActive());
    QCOMPARE(shown.count(), 0);
    handler->destroy();
}

void TestCommandExecution::outsideDebugModeNothingIsSent()
{
    const Test::DebugMode debug(false);
    const QByteArray transcript = bench->readFile("ksbase.log");
    QCOMPARE(panel->getEngine()->sendCommand(command), std::string());
    QCOMPARE(panel->getEngine()->sendCommand(""), std::string());
    run(otherCommand);
    QCOMPARE(bench->takeJournal(), QStringList({otherCommand}));
    QVERIFY(!bench->readFile("ksbase.log").mid(transcript.size()).contains(command));
}

void TestCommandExecution::inDebugModeARawCommandIsAnswered()
{
    const Test::DebugMode debug(true);
    QCOMPARE(panel->getEngine()->sendCommand(command), run(command).toStdString());
    QCOMPARE(bench->takeJournal(), QStringList({command, command}));
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
}

void TestCommandExecution::anEmptyRawCommandIsRefused()
{
    const Test::DebugMode debug(true);
    QVERIFY_EXCEPTION_THROWN(panel->getEngine()->sendCommand(""), Orvex::FactoryFailed);
}

void TestCommandExecution::aRawCommandIsOfTheFirstType()
{
    const Test::DebugMode debug(true);
    setFaults(bench->hold(command));
    QTimer::singleShot(0, this, [this] {
        QTRY_VERIFY(panel->getEngine()->isRunning());
        QCOMPARE(panel->getEngine()->getCommandHandlers().getFirst()->getCommandType(),
                 CommandType::Control);
        bench->release();
    });
    QVERIFY(!panel->getEngine()->sendCommand(command).empty());
}

void TestCommandExecution::aRawCommandStopsTheTickOnItsReturn()
{
    const Test::DebugMode debug(true);
    setFaults(bench->hold(command) + Bench::fault(otherCommand, "kind = \"never\""));
    CommandHandler* next = nullptr;
    QTimer::singleShot(0, this, [this, &next] {
        QTRY_VERIFY(panel->getEngine()->isRunning());
        next = create(CommandType::Control, otherCommand);
        bench->release();
        // On top of the raw command's wait, which returns after this only.
        QTRY_VERIFY(next->isRunning());
        QVERIFY(getTick()->isActive());
    });
    panel->getEngine()->sendCommand(command);
    QVERIFY(next != nullptr);
    QVERIFY(next->isRunning());
    QVERIFY(!getTick()->isActive());
    next->destroy();
}

void TestCommandExecution::aSecondExecutionIsRefused()
{
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    try {
        panel->getEngine()->executeCommand(handler);
        QFAIL("a second execution was begun");
    } catch (const Orvex::InvalidRequest& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Already running"));
        QCOMPARE(failure.getFunction(), std::string("executeCommand"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/KSBaseHandler"));
    }
    QVERIFY(panel->getEngine()->isRunning());
    bench->release();
    Board::waitCommandHandlerReady(handler);
    handler->destroy();
}

void TestCommandExecution::aRefusedExecutionIsPrintedAndLeavesTheCommandPending()
{
    setFaults(bench->hold(command));
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    Test::ConsoleRecorder recorder;
    // A second worker takes the same command, since it is pending still.
    QThread thread;
    Board::Scheduler* const scheduler = Board::Scheduler::create(&thread, panel->getEngine());
    thread.start();
    QTRY_VERIFY(thread.isFinished());
    QTRY_COMPARE(recorder.getMessages().size(), 1);
    const QString report = recorder.getLines().first();
    QVERIFY2(report.startsWith("Already running"), qPrintable(report));
    QVERIFY(report.contains("executeCommand"));
    QCOMPARE(panel->getEngine()->getCommandHandlers().getPendings().getFirst(), handler);
    bench->release();
    Board::waitCommandHandlerReady(handler);
    QCOMPARE(bench->count(command), 1);
    handler->destroy();
    scheduler->destroy();
}

void TestCommandExecution::aNullHandlerIsRefused()
{
    try {
        panel->getEngine()->executeCommand(nullptr);
        QFAIL("nothing was executed");
    } catch (const Orvex::Fatal& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Null commandHandler"));
        QCOMPARE(failure.getFunction(), std::string("executeCommand"));
    }
    QVERIFY(!panel->getEngine()->isRunning());
}

void TestCommandExecution::aFailureOnTheWorkerIsPrintedAndTheQueueMovesOn_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("report");
    QTest::newRow("its own") << "own"
                             << "out of order";
    QTest::newRow("standard") << "standard"
                              << "Processing aborted [out of order]";
    QTest::newRow("other") << "other"
                           << "Processing aborted [something strange...]";
}

void TestCommandExecution::aFailureOnTheWorkerIsPrintedAndTheQueueMovesOn()
{
    QFETCH(QString, kind);
    QFETCH(QString, report);
    Test::ConsoleRecorder recorder;
    CommandHandler* const failing = create(CommandType::Control, command);
    // What hears of the reply on the worker throws: the failure comes out of the execution.
    connect(
        failing, &CommandHandler::resultReady, failing,
        [kind] {
            if (kind == "own") {
                throw Orvex::Exception("out of order");
            }
            if (kind == "standard") {
                throw std::runtime_error("out of order");
            }
            throw 42;
        },
        Qt::DirectConnection);
    CommandHandler* const next = create(CommandType::Control, otherCommand);
    Board::waitCommandHandlerReady(next);
    QCOMPARE(recorder.getMessages().size(), 1);
    // Printed, and not as an error: the mark of one would lead the line.
    const QString line = recorder.getLines().first();
    QVERIFY2(line.startsWith(report), qPrintable(line));
    QCOMPARE(line.contains("src/lib/Board/Scheduler"), kind != "own");
    QCOMPARE(line.contains("launch"), kind != "own");
    failing->destroy();
    next->destroy();
}

void TestCommandExecution::anEmptyResultIsReportedAndSentAgain()
{
    setFaults(bench->hold(command));
    Test::ConsoleRecorder recorder;
    CommandHandler* const handler = create(CommandType::Control, command);
    QTRY_VERIFY(handler->isRunning());
    // What ends the wait is not the tool: the worker is told to quit.
    panel->getEngine()->preDestroy();
    QTRY_COMPARE(recorder.getMessages().size(), 1);
    const QString report = recorder.getLines().first();
    QVERIFY2(report.startsWith("Empty result"), qPrintable(report));
    QVERIFY(report.contains(QString("command: ") + command));
    QVERIFY(report.contains("executeCommand"));
    // Still pending, so the same command goes out once more, and the creator's wait is answered.
    QTRY_VERIFY(handler->isRunning());
    bench->release();
    Board::waitCommandHandlerReady(handler);
    QVERIFY(handler->hasFinished());
    handler->destroy();
    QTRY_COMPARE(bench->count(command), 2);
}

void TestCommandExecution::theSchedulerRefusesItsArguments_data()
{
    QTest::addColumn<bool>("hasThread");
    QTest::addColumn<bool>("hasEngine");
    QTest::addColumn<QString>("message");
    QTest::newRow("thread") << false << true << "Null thread";
    QTest::newRow("engine") << true << false << "Null ksBaseHandler";
    QTest::newRow("both") << false << false << "Null thread";
}

void TestCommandExecution::theSchedulerRefusesItsArguments()
{
    QFETCH(bool, hasThread);
    QFETCH(bool, hasEngine);
    QFETCH(QString, message);
    QThread thread;
    try {
        Board::Scheduler::create(hasThread ? &thread : nullptr,
                                 hasEngine ? panel->getEngine() : nullptr);
        QFAIL("nothing was refused");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains(message));
        QCOMPARE(failure.getFunction(), std::string("preCreate"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/Scheduler"));
    }
}

void TestCommandExecution::theSchedulerHasOneSlot()
{
    const QMetaObject& meta = Board::Scheduler::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("launch()"));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
}

void TestCommandExecution::theSchedulerLaunchesWhenItsThreadStarts()
{
    QThread thread;
    Board::Scheduler* const scheduler = Board::Scheduler::create(&thread, panel->getEngine());
    QCOMPARE(static_cast<QObject*>(scheduler)->thread(), &thread);
    QVERIFY(scheduler->parent() == nullptr);
    QVERIFY(QObject::disconnect(&thread, SIGNAL(started()), scheduler, SLOT(launch())));
    QVERIFY(QObject::connect(&thread, SIGNAL(started()), scheduler, SLOT(launch())));
    // With nothing pending it ends the thread at once.
    bool hasFinished = false;
    connect(&thread, &QThread::finished, this, [&hasFinished] { hasFinished = true; });
    thread.start();
    QTRY_VERIFY(hasFinished);
    thread.wait();
    scheduler->destroy();
}

void TestCommandExecution::aSilentToolLeavesTheWindowAlive()
{
    setFaults(Bench::fault(command, "kind = \"never\""));
    CommandHandler* const silent = create(CommandType::Control, command);
    QTRY_VERIFY(silent->isRunning());
    CommandHandler* const queued = create(CommandType::Control, otherCommand);
    bool served = false;
    QTimer::singleShot(0, this, [&] { served = true; });
    QTRY_VERIFY(served);
    QVERIFY(!queued->hasFinished());
    QCOMPARE(bench->count(otherCommand), 0);
    queued->destroy();
    silent->destroy();
}

void TestCommandExecution::manyCommandsAreEachAnsweredOnce()
{
    panel.reset();
    bench->setTool(
        "#!/bin/sh\nwhile read -r line; do echo \"$line COMMAND SUCCEEDED\" >&2; done\n");
    panel = std::make_unique<Test::Panel>();
    for (int number = 0; number < 2000; ++number) {
        const std::string text = "command " + std::to_string(number);
        QCOMPARE(panel->run(CommandType::Control, text), text + " COMMAND SUCCEEDED\n");
    }
}

KESTOBOARD_TEST_MAIN(TestCommandExecution)

#include "tst_command_execution.moc"
