#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Critical.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>

#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <filesystem>
#include <memory>

using Board::KSBaseHandler;
using Test::CommandType;

namespace
{

const char transcript[] = "ksbase.log";

/// Answers every command with a bare mark, and tells the arguments that it was started with.
const QByteArray plainTool = "#!/bin/sh\n"
                             "echo \"$@\" > arguments\n"
                             "while read -r line; do echo 'COMMAND SUCCEEDED' >&2; done\n";

} // namespace

/// How the engine comes up and goes down, and how it ends with its tool.
class TestChildProcess : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aNullWindowIsRefused();
    void withoutTheToolNothingIsMade();
    void thePlaceOfTheToolIsPrinted();
    void thePlaceOfTheToolIsPrintedByteByByte();
    void anUnwritableTranscriptIsReportedAfterTheProbe();
    void aProbeThatCannotStartPasses();
    void theTranscriptStartsAnewWithItsFirstLine();
    void theTranscriptHoldsCommandsAndEveryByteOfTheReplies();
    void standardOutputIsNotTranscribed();
    void theToolGetsItsArgumentsAndTheEnvironment();
    void theConnectionsAreThoseOfTheTable_data();
    void theConnectionsAreThoseOfTheTable();
    void theTimersHaveTheirIntervals();
    void theSlotsAndSignalsStandInTheirOrder();
    void theEngineTellsItsRecord();
    void theEngineIsIdleOnceItIsMade();
    void anEndOfTheToolEndsTheProcess_data();
    void anEndOfTheToolEndsTheProcess();
    void theLastWordsArePrintedStandardErrorFirst();
    void aKilledToolLeavesTheWaitingCommandWithoutAReply();
    void aToolThatCannotStartEndsTheProcess();
    void anEngineCanBeDestroyedInAnyState_data();
    void anEngineCanBeDestroyedInAnyState();
    void destroyEndsTheTool();
    void thePollOutlivesTheWindow();

private:
    /// Runs the probe in the bench until it ends by itself.
    QByteArray runProbe(const QStringList& commands, int* exitStatus)
    {
        QProcess probe;
        probe.start(KESTOBOARD_PANEL_PROBE, commands);
        if (!probe.waitForFinished(-1) || probe.exitStatus() != QProcess::NormalExit) {
            *exitStatus = -1;
        } else {
            *exitStatus = probe.exitCode();
        }
        return probe.readAllStandardOutput();
    }

    std::unique_ptr<Test::Bench> bench;
};

void TestChildProcess::init()
{
    bench = std::make_unique<Test::Bench>();
}

void TestChildProcess::cleanup()
{
    bench.reset();
}

void TestChildProcess::aNullWindowIsRefused()
{
    Test::ConsoleRecorder recorder;
    try {
        KSBaseHandler::create(nullptr);
        QFAIL("nothing was refused");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Null mainWindow"));
        QCOMPARE(failure.getFunction(), std::string("preCreate"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/KSBaseHandler"));
    }
    QCOMPARE(recorder.getLines(), QStringList());
    QVERIFY(!QFileInfo::exists(bench->getPath(transcript)));
}

void TestChildProcess::withoutTheToolNothingIsMade()
{
    bench->writeFile(transcript, "of an earlier run");
    bench->removeTool();
    Test::ConsoleRecorder recorder;
    try {
        const Test::Panel panel;
        QFAIL("nothing was refused");
    } catch (const Orvex::Critical& failure) {
        QCOMPARE(failure.getMessage(), std::string("Cannot found ksbase2_cli in $PATH"));
        QCOMPARE(failure.getFunction(), std::string("preCreate"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/KSBaseHandler"));
    }
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(bench->readFile(transcript), QByteArray("of an earlier run"));
}

void TestChildProcess::thePlaceOfTheToolIsPrinted()
{
    Test::ConsoleRecorder recorder;
    const Test::Panel panel;
    QCOMPARE(recorder.getLines().first(),
             "Using ksbase2 found in: " + Test::Bench::getToolDirectory() + "/ksbase2_cli");
}

void TestChildProcess::thePlaceOfTheToolIsPrintedByteByByte()
{
    const Test::Panel panel;
    // A name that is no text in UTF-8.
    const std::string place = bench->getPath({}).toStdString() + "caf\xe9";
    std::filesystem::create_directory_symlink(Test::Bench::getToolDirectory().toStdString(), place);
    qputenv("PATH", QByteArray::fromStdString(place) + ':' + qgetenv("PATH"));
    Test::ConsoleRecorder recorder;
    KSBaseHandler::preCreate(panel.getWindow());
    QCOMPARE(recorder.getMessages().size(), 1);
    QCOMPARE(recorder.getMessages().first().text,
             "Using ksbase2 found in: " + place + "/ksbase2_cli");
}

void TestChildProcess::anUnwritableTranscriptIsReportedAfterTheProbe()
{
    // A directory of that name cannot be written by anybody.
    QVERIFY(QDir::current().mkdir(transcript));
    Test::ConsoleRecorder recorder;
    try {
        const Test::Panel panel;
        QFAIL("nothing was refused");
    } catch (const Orvex::Critical& failure) {
        QCOMPARE(failure.getMessage(), std::string("Unable to write file ksbase.log"));
        QCOMPARE(failure.getFunction(), std::string("KSBaseHandler"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/KSBaseHandler"));
    }
    QCOMPARE(recorder.getLines().size(), 1);
    QVERIFY(recorder.getLines().first().startsWith("Using ksbase2 found in: "));
    QCOMPARE(bench->getJournal(), QStringList());
}

void TestChildProcess::aProbeThatCannotStartPasses()
{
    qputenv("PATH", QFile::encodeName(Test::Bench::getToolDirectory()));
    Test::ConsoleRecorder recorder;
    const Test::Panel panel;
    QCOMPARE(recorder.getLines().first(), QString("Using ksbase2 found in: "));
    QVERIFY(recorder.contains("Kestoboard succesfully launched"));
}

void TestChildProcess::theTranscriptStartsAnewWithItsFirstLine()
{
    bench->writeFile(transcript, "of an earlier run\n");
    const Test::Panel panel;
    QVERIFY(bench->readFile(transcript).startsWith(">>ksbase2_cli -s -x\n>board list\n"));
    QVERIFY(!bench->readFile(transcript).contains("earlier"));
}

void TestChildProcess::theTranscriptHoldsCommandsAndEveryByteOfTheReplies()
{
    QByteArray reply;
    for (int byte = 255; byte > 0; --byte) {
        reply += static_cast<char>(byte);
    }
    bench->writeFile("reply", reply + "\nCOMMAND FAILED\n");
    bench->setTool("#!/bin/sh\nread -r line; cat reply >&2\nread -r line; cat reply >&2\n"
                   "read -r line\n");
    const Test::Panel panel;
    const QByteArray command = "caf\u00e9 \xff";
    const std::string result = panel.run(CommandType::Control, command.toStdString());
    const QByteArray answered = reply + "\nCOMMAND FAILED\n";
    QTRY_COMPARE(bench->readFile(transcript),
                 ">>ksbase2_cli -s -x\n>board list\n" + answered + ">" + command + "\n" + answered);
    QCOMPARE(QByteArray::fromStdString(result), answered);
}

void TestChildProcess::standardOutputIsNotTranscribed()
{
    bench->setTool("#!/bin/sh\nwhile read -r line; do echo aside; echo 'COMMAND SUCCEEDED' >&2; "
                   "done\n");
    const Test::Panel panel;
    QCOMPARE(panel.run(CommandType::Control, "x"), std::string("COMMAND SUCCEEDED\n"));
    QCOMPARE(bench->readFile(transcript),
             QByteArray(">>ksbase2_cli -s -x\n>board list\nCOMMAND SUCCEEDED\n>x\nCOMMAND "
                        "SUCCEEDED\n"));
}

void TestChildProcess::theToolGetsItsArgumentsAndTheEnvironment()
{
    qputenv("KESTOBOARD_TEST_WORD", "passed on");
    bench->setTool("#!/bin/sh\necho \"$#:$1:$2:$KESTOBOARD_TEST_WORD\" > started\n"
                   "while read -r line; do echo 'COMMAND SUCCEEDED' >&2; done\n");
    const Test::Panel panel;
    qunsetenv("KESTOBOARD_TEST_WORD");
    QCOMPARE(bench->readFile("started"), QByteArray("2:-s:-x:passed on\n"));
}

void TestChildProcess::theConnectionsAreThoseOfTheTable_data()
{
    QTest::addColumn<QByteArray>("sender");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("added") << QByteArray("engine") << QByteArray(SIGNAL(commandAdded()))
                           << QByteArray(SLOT(startThread()));
    QTest::newRow("tick") << QByteArray("tick") << QByteArray(SIGNAL(timeout()))
                          << QByteArray(SLOT(onTimeout()));
    QTest::newRow("text") << QByteArray("process") << QByteArray(SIGNAL(readyReadStandardError()))
                          << QByteArray(SLOT(processCommand()));
    QTest::newRow("end") << QByteArray("process")
                         << QByteArray(SIGNAL(finished(int, QProcess::ExitStatus)))
                         << QByteArray(SLOT(onProcessFinished()));
    QTest::newRow("error") << QByteArray("process")
                           << QByteArray(SIGNAL(error(QProcess::ProcessError)))
                           << QByteArray(SLOT(onProcessFinished()));
    QTest::newRow("poll") << QByteArray("poll") << QByteArray(SIGNAL(timeout()))
                          << QByteArray(SLOT(refreshTamsaMap()));
}

void TestChildProcess::theConnectionsAreThoseOfTheTable()
{
    QFETCH(QByteArray, sender);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    const Test::Panel panel;
    KSBaseHandler* const engine = panel.getEngine();
    QObject* object = engine;
    if (sender == "process") {
        object = engine->findChild<QProcess*>();
    } else if (sender == "poll") {
        object = panel.getPollTimer();
    } else if (sender == "tick") {
        for (QTimer* const timer : engine->findChildren<QTimer*>()) {
            object = timer == panel.getPollTimer() ? object : timer;
        }
    }
    QVERIFY(object != nullptr);
    // Only a connection that is there can be taken away.
    QVERIFY(QObject::disconnect(object, signal.constData(), engine, slot.constData()));
    if (sender == "engine") {
        QVERIFY(QObject::connect(object, signal.constData(), engine, slot.constData()));
    }
}

void TestChildProcess::theTimersHaveTheirIntervals()
{
    const Test::Panel panel;
    QList<int> intervals;
    for (const QTimer* const timer : panel.getEngine()->findChildren<QTimer*>()) {
        QVERIFY(!timer->isSingleShot());
        intervals += timer->interval();
    }
    std::sort(intervals.begin(), intervals.end());
    QCOMPARE(intervals, QList<int>({1000, 5000}));
}

void TestChildProcess::theSlotsAndSignalsStandInTheirOrder()
{
    const QMetaObject& meta = KSBaseHandler::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        methods += meta.method(index).methodSignature();
    }
    QCOMPARE(methods, QStringList({"commandAdded()", "commandDone()", "refreshTamsaMap()",
                                   "onProcessFinished()", "processCommand()", "startThread()",
                                   "onTimeout()"}));
}

void TestChildProcess::theEngineTellsItsRecord()
{
    const Test::Panel panel;
    const KSBaseHandler* const engine = panel.getEngine();
    QCOMPARE(engine->getAlias(), std::string("KSBaseHandler"));
    QCOMPARE(engine->_getLabel(), std::string("KSBaseHandler"));
    const std::unique_ptr<Orvex::Slot> slot(engine->_getSlot());
    QCOMPARE(slot->getDataLabel(), std::string("KSBaseHandler"));
    const std::unique_ptr<Orvex::Record> record(slot->getDataRecord());
    QCOMPARE(record->getLabel(), std::string("KSBaseHandler"));
    QCOMPARE(record->getSlots().getCount(), 1UL);
    QCOMPARE(record->getSlots().getFirst()->getDataLabel(), std::string("KSBaseHandler"));
}

void TestChildProcess::theEngineIsIdleOnceItIsMade()
{
    const Test::Panel panel;
    const KSBaseHandler* const engine = panel.getEngine();
    QVERIFY(!engine->isRunning());
    QVERIFY(!engine->isRefreshing());
    QVERIFY(!engine->isMonitoring());
    QVERIFY(engine->getCommandHandlers().isEmpty());
    QVERIFY(engine->getTamsas().isEmpty());
    QCOMPARE(engine->getSelectedTamsa(), nullptr);
    QVERIFY(engine->getData().isEmpty());
    QVERIFY(engine->parent() == nullptr);
}

void TestChildProcess::anEndOfTheToolEndsTheProcess_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("clean exit") << QByteArray("exit 0");
    QTest::newRow("exit with a status") << QByteArray("exit 7");
    QTest::newRow("killed") << QByteArray("kill -9 $$");
    QTest::newRow("crash") << QByteArray("kill -11 $$");
}

void TestChildProcess::anEndOfTheToolEndsTheProcess()
{
    QFETCH(QByteArray, end);
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line\n" +
                   end + "\n");
    int status = 0;
    const QByteArray said = runProbe({"last"}, &status);
    QCOMPARE(status, 1);
    QCOMPARE(said.count("E: ksbase2 process has finished. This should not happen\n"), 1);
    QVERIFY(!said.contains("reply: "));
    QCOMPARE(bench->readFile(transcript),
             QByteArray(">>ksbase2_cli -s -x\n>board list\nCOMMAND SUCCEEDED\n>last\n"));
}

void TestChildProcess::theLastWordsArePrintedStandardErrorFirst()
{
    bench->setTool("#!/bin/sh\nread -r line; echo early; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line; echo; echo late\nexit 0\n");
    int status = 0;
    const QByteArray said = runProbe({"last"}, &status);
    QCOMPARE(status, 1);
    // Nothing is left on standard error: one empty line. Standard output: all that it ever said.
    QVERIFY2(said.endsWith("This should not happen\n\nearly\n\nlate\n\n"), said.constData());
}

void TestChildProcess::aKilledToolLeavesTheWaitingCommandWithoutAReply()
{
    bench->setTool("#!/bin/sh\nread -r line; echo 'COMMAND SUCCEEDED' >&2\n"
                   "read -r line; echo 'half a reply' >&2; kill -9 $$\n");
    int status = 0;
    const QByteArray said = runProbe({"last"}, &status);
    QCOMPARE(status, 1);
    QVERIFY(!said.contains("reply: "));
    QVERIFY(!said.contains("all sent"));
    QVERIFY(bench->readFile(transcript).endsWith(">last\nhalf a reply\n"));
}

void TestChildProcess::aToolThatCannotStartEndsTheProcess()
{
    bench->setTool("#!/no/such/interpreter\n");
    int status = 0;
    const QByteArray said = runProbe({}, &status);
    QCOMPARE(status, 1);
    QVERIFY(said.startsWith("Using ksbase2 found in: "));
    QVERIFY2(said.endsWith("E: ksbase2 process has finished. This should not happen\n\n\n"),
             said.constData());
    QCOMPARE(bench->readFile(transcript), QByteArray(">>ksbase2_cli -s -x\n"));
}

void TestChildProcess::anEngineCanBeDestroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    QTest::newRow("idle") << "idle";
    QTest::newRow("a command is queued") << "queued";
    QTest::newRow("the worker has been started") << "started";
    QTest::newRow("a command is running") << "running";
    QTest::newRow("a command has just finished") << "finished";
}

void TestChildProcess::anEngineCanBeDestroyedInAnyState()
{
    QFETCH(QString, state);
    bench->setScenario(Test::Bench::board("Aurora") + bench->hold("board set force_bit"));
    auto panel = std::make_unique<Test::Panel>();
    std::vector<Board::CommandHandler*> handlers;
    if (state != "idle") {
        handlers.push_back(Board::CommandHandler::create(
            CommandType::Control, "board set force_bit on", panel->getEngine()));
    }
    if (state == "started") {
        QCoreApplication::processEvents();
    } else if (state == "running") {
        QTRY_VERIFY(handlers.front()->isRunning());
        handlers.push_back(Board::CommandHandler::create(CommandType::Control, "board get mode",
                                                         panel->getEngine()));
    } else if (state == "finished") {
        bench->release();
        QTRY_VERIFY(handlers.front()->hasFinished());
    }
    Test::ConsoleRecorder recorder;
    panel.reset();
    if (state == "queued") {
        // Its turn has not come, and does not come any more.
        QCOMPARE(bench->count("board set force_bit on"), 0);
        QCoreApplication::processEvents();
        QCOMPARE(recorder.getLines(), QStringList());
    }
    for (Board::CommandHandler* const handler : handlers) {
        handler->destroy();
    }
}

void TestChildProcess::destroyEndsTheTool()
{
    bench->setTool("#!/bin/sh\nwhile read -r line; do echo 'COMMAND SUCCEEDED' >&2; done\n"
                   "echo ended > ended\n");
    auto panel = std::make_unique<Test::Panel>();
    panel.reset();
    QCOMPARE(bench->readFile("ended"), QByteArray("ended\n"));
}

void TestChildProcess::thePollOutlivesTheWindow()
{
    bench->setScenario(Test::Bench::board("Aurora"));
    Test::Panel panel;
    KSBaseHandler* const engine = panel.getEngine();
    panel.closeWindow();
    bench->setScenario(Test::Bench::board("Borealis"));
    engine->refreshTamsaMap();
    QVERIFY(engine->getTamsa("Borealis") != nullptr);
    engine->onTimeout();
}

KESTOBOARD_TEST_MAIN(TestChildProcess)

#include "tst_child_process.moc"
