#include "Course.h"
#include "Scene.h"
#include "Scripts.h"
#include "Situation.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <foundation/Critical.h>

#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <dlfcn.h>

using Test::Fault;
using Test::Outcome;
using Test::Situation;
using Test::State;

Q_DECLARE_METATYPE(Fault)

namespace
{

const char transcript[] = "ksbase.log";
const char found[] = "Using ksbase2 found in: ";
const char launched[] = "Kestoboard succesfully launched";

/// The very large answer of a search: a single line, which the console shows.
const int largeLine = 1'000'000;

/// What the engine allows a tool to end by itself.
const int toolEndTime = 3'000;
/// What a tool gets in place of it: a machine can be busy for longer than that, and a tool that
/// never ends need not be waited for.
enum class Grace { AsLongAsItTakes = -1, None = 0 };
Grace grace = Grace::AsLongAsItTakes;
QVector<int> limits;

/// Something that a tool says of itself, with a word in it to wait for.
QByteArray getWords(Fault fault, State state)
{
    switch (fault) {
    case Fault::Nul:
        return QByteArray("No\0 Notice\n", 11);
    case Fault::NulAhead:
        return QByteArray("\0Notice\n", 8);
    case Fault::Between:
        return "Notice\nCOMMAND FAILED\n";
    case Fault::Large:
        return QByteArray(Test::FaultMatrix::getLargeSize(state), 'x') + "Notice\n";
    case Fault::Garbage:
        return "\xff\xfe\x80Notice\n";
    default:
        break;
    }
    return "Notice\n";
}

/// What the search for the tool does in the fault.
QByteArray getSearch(Fault fault)
{
    const QByteArray head = "#!/bin/sh\n";
    const QByteArray answer = "command -v ksbase2_cli\n";
    switch (fault) {
    case Fault::Refused:
        return head + "exit 1\n";
    case Fault::Split:
        return head + "command -v ksbase2_cli | while IFS= read -r line; do\n"
                      "while [ \"$line\" ]; do rest=${line#?}; printf %s \"${line%\"$rest\"}\"; "
                      "line=$rest; done; done\n";
    case Fault::Nul:
        return head + "printf 'a\\000b '\n" + answer;
    case Fault::NulAhead:
        return head + "printf '\\000'\n" + answer;
    case Fault::Before:
        return head + "echo Notice\n" + answer;
    case Fault::Large:
        return head + "echo Notice; head -c " + QByteArray::number(largeLine) +
               " /dev/zero | tr '\\000' x\n" + answer;
    case Fault::Garbage:
        return head + "printf 'Notice\\377\\376'\n" + answer;
    case Fault::Exit:
        return head + answer + "exit 3\n";
    case Fault::Signal:
        return head + answer + "kill -9 $$\n";
    case Fault::CannotStart:
        return "#!/no/such/interpreter\n";
    case Fault::CloseInput:
        return head + "exec <&-\n" + answer;
    case Fault::CloseErrors:
        return head + "exec 2>&-\n" + answer;
    default:
        break;
    }
    return {};
}

/// What a tool that has just been started does in the fault.
QByteArray getBeginning(Fault fault)
{
    switch (fault) {
    case Fault::Late:
        return Test::Scripts::getPause();
    case Fault::Never:
        return Test::Scripts::getStay();
    case Fault::CloseErrors:
        return "exec 2>&-\n";
    case Fault::Output:
        return "cat words\n";
    default:
        break;
    }
    return "cat words >&2\n";
}

/// What a tool whose input has ended does in the fault.
QByteArray getLastAct(Fault fault)
{
    switch (fault) {
    case Fault::Late:
        return "sleep 0.1\n: > left\n";
    case Fault::Never:
        return Test::Scripts::getStay();
    case Fault::Output:
        return "cat words\n: > left\n";
    case Fault::Exit:
        return ": > left\nexit 3\n";
    case Fault::Signal:
        return ": > left\nkill -9 $$\n";
    case Fault::CloseErrors:
        return "exec 2>&-\n: > left\n";
    default:
        break;
    }
    return "cat words >&2\n: > left\n";
}

} // namespace

// In place of the toolkit's, which comes after the program.
bool QProcess::waitForFinished(int limit)
{
    using Wait = bool (*)(QProcess*, int);
    static const auto wait =
        reinterpret_cast<Wait>(dlsym(RTLD_NEXT, "_ZN8QProcess15waitForFinishedEi"));
    if (limit >= 0) {
        limits += limit;
    }
    return wait(this, limit < 0 ? limit : int(grace));
}

/// The cells of the matrix of faults in which the tool is asked nothing and the process lives on:
/// while it is looked for, at its start, when the panel is idle and while the engine ends.
class TestFaultMatrixUnasked : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { scene.finish(); }
    void cleanupTestCase() { scene.end(); }
    void aFaultOfTheSearch_data() { addCells(State::Probing, {Outcome::Blocked}); }
    void aFaultOfTheSearch();
    void aSearchThatTakesLongBlocks_data();
    void aSearchThatTakesLongBlocks();
    void aFaultAtTheStart_data() { addCells(State::Starting, {Outcome::Ends, Outcome::EndsNext}); }
    void aFaultAtTheStart();
    void aFaultOfAnIdleTool_data();
    void aFaultOfAnIdleTool();
    void anIdleToolThatSaysVeryMuchIsRead();
    void anIdleToolThatClosesItsStandardErrorIsNotNoticed();
    void aFaultWhileClosing_data() { addCells(State::Closing, {}); }
    void aFaultWhileClosing();

private:
    /// The faults that the state meets, but for some outcomes.
    static void addCells(State state, const QVector<Outcome>& others);
    /// A new panel, which is idle while its tool does something of itself.
    Board::KSBaseHandler* actWhenIdle(const QByteArray& act);
    /// Has what is said at the start be there before the first command is sent.
    void awaitBeginning(Fault fault);

    Test::Scene scene;
};

void TestFaultMatrixUnasked::init()
{
    grace = Grace::AsLongAsItTakes;
    limits.clear();
    scene.begin();
}

void TestFaultMatrixUnasked::addCells(State state, const QVector<Outcome>& others)
{
    QTest::addColumn<Fault>("fault");
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        if (cell.state == state && !others.contains(cell.outcome)) {
            QTest::newRow(qPrintable(Test::FaultMatrix::getForm(cell.fault).title)) << cell.fault;
        }
    }
}

void TestFaultMatrixUnasked::aFaultOfTheSearch()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Probing);
    scene.renew();
    scene.getBench()->setSearch(getSearch(fault));
    Test::ConsoleRecorder recorder;
    const QString refusal = scene.makeStage();
    const QStringList lines = recorder.getLines();
    scene.end();
    if (outcome == Outcome::NoTool) {
        QCOMPARE(refusal, QString("Cannot found ksbase2_cli in $PATH"));
        QCOMPARE(lines, QStringList());
        return;
    }
    QCOMPARE(refusal, QString());
    QCOMPARE(lines.mid(1), Test::getUsualCourse(State::FirstListing).lines);
    QVERIFY(lines.first().startsWith(found));
    QCOMPARE(lines.first().startsWith(QString(found) + "Notice"), outcome == Outcome::Passed);
    const bool knowsPlace = fault != Fault::CannotStart;
    QCOMPARE(lines.first().endsWith("/ksbase2_cli"), knowsPlace);
    QCOMPARE(lines.first().size() > largeLine, fault == Fault::Large);
}

void TestFaultMatrixUnasked::aSearchThatTakesLongBlocks_data()
{
    QTest::addColumn<Fault>("fault");
    for (const Fault fault : {Fault::Late, Fault::Never}) {
        QCOMPARE(Test::FaultMatrix::getOutcome(fault, State::Probing), Outcome::Blocked);
        QTest::newRow(qPrintable(Test::FaultMatrix::getForm(fault).title)) << fault;
    }
}

void TestFaultMatrixUnasked::aSearchThatTakesLongBlocks()
{
    QFETCH(Fault, fault);
    scene.renew();
    scene.getBench()->setSearch(Test::Scripts::getLateSearch());
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // It is killed: what it leaves behind goes with the bench.
    environment.insert("TMPDIR", scene.getBench()->getPath({}));
    probe.setProcessEnvironment(environment);
    probe.start(KESTOBOARD_FAULT_PROBE, {"stay"});
    QTRY_VERIFY(QFile::exists("asked"));
    QCOMPARE(probe.readAllStandardOutput(), QByteArray());
    QVERIFY(!QFile::exists(transcript));
    if (fault == Fault::Late) {
        scene.getBench()->writeFile("go", {});
        QByteArray said;
        QTRY_VERIFY((said += probe.readAllStandardOutput()).contains(launched));
        QVERIFY(said.startsWith(found));
    }
    probe.kill();
    probe.waitForFinished(-1);
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
}

void TestFaultMatrixUnasked::awaitBeginning(Fault fault)
{
    const bool isOutput = fault == Fault::Output;
    const char* const place = isOutput ? "done" : transcript;
    const char* const word = isOutput ? "" : "Notice\n";
    while (!(QFile::exists(place) && scene.getBench()->readFile(place).contains(word))) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
}

void TestFaultMatrixUnasked::aFaultAtTheStart()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Starting);
    scene.renew();
    Test::Bench* const bench = scene.getBench();
    bench->writeFile("words", getWords(fault, State::Starting));
    bench->setTool(Test::Scripts::getStartingTool(getBeginning(fault)));
    const bool isSilent = outcome == Outcome::Patient || outcome == Outcome::Waits;
    if (fault == Fault::Never) {
        grace = Grace::None;
    }

    Test::ConsoleRecorder recorder;
    connect(Orvex::console, &Orvex::Console::messageAdded, &recorder,
            [&](const Orvex::Message& message) {
                if (message.text == launched && !isSilent) {
                    awaitBeginning(fault);
                }
            });
    QObject context;
    Test::when(
        &context, [&] { return isSilent && bench->readFile(transcript).contains(">board list\n"); },
        [&] {
            bench->writeFile("go", {});
            if (outcome == Outcome::Waits) {
                Test::findWindow()->getKSBaseHandler()->destroy();
            }
        });
    const QString failure = scene.makeStage();
    const QStringList lines = Test::abridge(recorder.getLines()).mid(1);
    scene.end();
    const bool waits = outcome == Outcome::Waits;
    QCOMPARE(failure, waits ? QString(Test::endedWait) : QString());
    QCOMPARE(lines,
             waits ? QStringList(launched) : Test::getUsualCourse(State::FirstListing).lines);
}

void TestFaultMatrixUnasked::aFaultOfAnIdleTool_data()
{
    QTest::addColumn<Fault>("fault");
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        // What is very large has a test of its own.
        if (cell.state == State::Idle && cell.outcome == Outcome::Aside &&
            cell.fault != Fault::Large) {
            QTest::newRow(qPrintable(Test::FaultMatrix::getForm(cell.fault).title)) << cell.fault;
        }
    }
}

void TestFaultMatrixUnasked::aFaultOfAnIdleTool()
{
    QFETCH(Fault, fault);
    Board::KSBaseHandler* const engine = scene.takeEngine();
    QFile::resize(transcript, 0);
    // The simulated tool speaks of itself after an answer that nobody waits for any more.
    const Situation situation(scene.getBench(), State::Raw);
    const bool isOutput = fault == Fault::Output;
    const QByteArray words = getWords(fault, State::Idle);
    situation.arm(isOutput ? Test::FaultMatrix::getTrouble(fault, State::Idle)
                           : QString("kind = \"after\"\nhex = \"%1\"").arg(QString(words.toHex())));
    situation.approach(engine);
    QCOMPARE(situation.perform(engine), Test::getUsualCourse(State::Raw).results);
    Test::ConsoleRecorder recorder;
    if (!isOutput) {
        QTRY_VERIFY(scene.getBench()->readFile(transcript).contains(words));
    }
    QCOMPARE(engine->getMode(), std::string("Jtag only"));
    QCOMPARE(recorder.getLines(), QStringList());
    QVERIFY(!scene.getBench()->readFile(transcript).contains("aside"));
}

Board::KSBaseHandler* TestFaultMatrixUnasked::actWhenIdle(const QByteArray& act)
{
    scene.getBench()->setTool(Test::Scripts::getIdleTool(act + ": > done\n"));
    Board::KSBaseHandler* const engine = scene.takeEngine();
    ::kill(static_cast<pid_t>(engine->findChild<QProcess*>()->processId()), SIGUSR1);
    return engine;
}

void TestFaultMatrixUnasked::anIdleToolThatSaysVeryMuchIsRead()
{
    QCOMPARE(Test::FaultMatrix::getOutcome(Fault::Large, State::Idle), Outcome::Aside);
    scene.renew();
    const QByteArray words = getWords(Fault::Large, State::Idle);
    scene.getBench()->writeFile("words", words);
    Test::ConsoleRecorder recorder;
    Board::KSBaseHandler* const engine = actWhenIdle("cat words >&2\n");
    const QStringList lines = recorder.getLines();
    QTRY_VERIFY(QFileInfo(transcript).size() > words.size());
    QTRY_VERIFY(scene.getBench()->readFile(transcript).endsWith(words));
    // The script knows no other answer.
    QCOMPARE(engine->getMode(), std::string("COMMAND SUCCEEDED"));
    QCOMPARE(recorder.getLines(), lines);
    scene.end();
}

void TestFaultMatrixUnasked::anIdleToolThatClosesItsStandardErrorIsNotNoticed()
{
    QCOMPARE(Test::FaultMatrix::getOutcome(Fault::CloseErrors, State::Idle), Outcome::Waits);
    scene.renew();
    Board::KSBaseHandler* const engine = actWhenIdle("exec 2>&-\n");
    QTRY_VERIFY(QFile::exists("done"));
    Test::ConsoleRecorder recorder;
    const Situation situation(scene.getBench(), State::Mode);
    QObject context;
    // The command goes out, and its wait lasts.
    Test::when(
        &context,
        [&] { return scene.getBench()->readFile(transcript).endsWith(">board get mode\n"); },
        [engine] {
            QVERIFY(engine->isRunning());
            QVERIFY(engine->findChild<QProcess*>()->state() == QProcess::Running);
            engine->destroy();
        });
    QCOMPARE(situation.perform(engine), QStringList(QString("thrown: ") + Test::endedWait));
    QCOMPARE(recorder.getLines(), QStringList());
    scene.end();
}

void TestFaultMatrixUnasked::aFaultWhileClosing()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Closing);
    scene.renew();
    Test::Bench* const bench = scene.getBench();
    bench->writeFile("words", getWords(fault, State::Closing));
    bench->setTool(fault == Fault::CloseInput
                       ? "#!/bin/sh\nread -r line\nexec <&-\necho 'COMMAND SUCCEEDED' >&2\n" +
                             Test::Scripts::getStay()
                       : Test::Scripts::getTool(getLastAct(fault)));
    QCOMPARE(scene.makeStage(), QString());
    Test::ConsoleRecorder recorder;
    const QPointer<QProcess> tool = scene.getStage()->getEngine()->findChild<QProcess*>();
    const auto id = static_cast<pid_t>(tool->processId());
    grace = outcome == Outcome::Killed ? Grace::None : Grace::AsLongAsItTakes;
    limits.clear();
    scene.endStage();
    QCOMPARE(limits, QVector<int>(1, toolEndTime));
    QVERIFY(tool.isNull());
    QVERIFY(::kill(id, 0) != 0);
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(QFile::exists("left"), outcome == Outcome::Left);
}

KESTOBOARD_TEST_MAIN(TestFaultMatrixUnasked)

#include "tst_fault_matrix_unasked.moc"
