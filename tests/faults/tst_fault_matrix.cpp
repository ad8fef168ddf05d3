#include "FaultMatrix.h"
#include "Scripts.h"
#include "Situation.h"
#include "Stage.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <foundation/Critical.h>

#include <QProcess>

#include <csignal>
#include <cstdio>

using Test::Fault;
using Test::Outcome;
using Test::Situation;
using Test::Stage;
using Test::State;

Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(State)

namespace
{

const char pagePath[] = KESTOBOARD_DOCS "/fault-matrix.md";
const char transcript[] = "ksbase.log";
const char found[] = "Using ksbase2 found in: ";
const char launched[] = "Kestoboard succesfully launched";
const char endedWait[] = "thrown: The wait for a reply has ended without one";

/// What the console says, and what is read or thrown besides.
struct Course {
    QStringList lines;
    QStringList results;
};

/// The verdicts of a healthy tool.
Course getUsual(State state)
{
    const QStringList bringUp{"Connected Borealis",
                              "Board succesfully selected",
                              "Mode successfully set to Jtag only",
                              "Clock bit successfully set to on",
                              "Reset bit successfully set to on",
                              "Reset bit successfully set to off",
                              "Board succesfully selected"};
    switch (state) {
    case State::FirstListing:
        return {{launched, "Connected Aurora", "Board succesfully selected",
                 "Mode successfully set to Jtag only", "Clock bit successfully set to on",
                 "Reset bit successfully set to on", "Reset bit successfully set to off"},
                {}};
    case State::Mode:
        return {{}, {"read: Jtag only"}};
    case State::ForceBit:
        return {{}, {"read: clear"}};
    case State::Monitor:
        return {{}, {"read: Core: steady ... SUCCEEDED"}};
    case State::SetMode:
        return {{"Mode successfully set to Jtag only"}, {}};
    case State::SetReset:
        return {{"Reset bit successfully set to on"}, {}};
    case State::SetClock:
        return {{"Clock bit successfully set to off"}, {}};
    case State::SetForceBit:
        return {{"Force bit successfully set to off"}, {}};
    case State::Select:
        return {{"Board succesfully selected"}, {}};
    case State::Flash:
        return {{"Program flash memory succeeded"}, {}};
    case State::Load:
        return {{"Bitstream successfully sent"}, {}};
    case State::ErrorHandler:
        return {{"Error handler successfully configured"}, {}};
    case State::Raw:
        return {{}, {"read: Commands of the board tool ... SUCCEEDED"}};
    case State::Nested:
        return {{"Force bit successfully set to off"},
                {"read: Core: steady ... SUCCEEDED", "listed"}};
    default:
        break;
    }
    return {Test::isBringUp(state) ? bringUp : QStringList(), {}};
}

/// The verdict of a tool that refuses, in place of the usual one.
QString getFailure(State state)
{
    switch (state) {
    case State::BringUpSelect:
    case State::BringUpRestore:
    case State::Select:
        return "E: Selection failed";
    case State::BringUpMode:
    case State::SetMode:
        return "E: Mode change failed";
    case State::BringUpClock:
    case State::SetClock:
        return "E: Setting of clock bit failed";
    case State::BringUpReset:
    case State::BringUpRelease:
    case State::SetReset:
        return "E: Reset failed";
    case State::SetForceBit:
    case State::Nested:
        return "E: Setting of force bit failed";
    case State::ForceBit:
        return "E: Refused by the board";
    case State::Flash:
        return "E: Program flash memory failed";
    case State::Load:
        return "E: Bitstream failed";
    case State::ErrorHandler:
        return "E: Error handler configuration failed";
    default:
        break;
    }
    return {};
}

/// How many lines a bring-up has before its step.
int getStep(State state)
{
    return Test::isBringUp(state) ? 1 + int(state) - int(State::BringUpSelect) : 0;
}

Course getTold(State state)
{
    Course course = getUsual(state);
    if (course.lines.isEmpty()) {
        course.lines += getFailure(state);
    } else {
        course.lines[getStep(state)] = getFailure(state);
    }
    return course;
}

Course getPassed(Fault fault, State state)
{
    const QString mark = state == State::Mode      ? ""
                         : fault == Fault::Refused ? " ... FAILED"
                                                   : " ... SUCCEEDED";
    const QString head = fault == Fault::Refused  ? "Error: Refused by the board"
                         : fault == Fault::Before ? "Notice"
                                                  : "noise";
    return {{}, {"read: " + head + mark}};
}

Course getExpected(Outcome outcome, Fault fault, State state)
{
    switch (outcome) {
    case Outcome::Told:
        return getTold(state);
    case Outcome::Passed:
        return getPassed(fault, state);
    case Outcome::Forgotten:
        return {{state == State::FirstListing ? launched : "Disconnected Aurora"}, {}};
    case Outcome::Thrown:
        return {{}, {"thrown: Should not be here"}};
    case Outcome::Waits:
        // What ends the wait is the end of the engine.
        return {getUsual(state).lines.mid(0, state == State::FirstListing ? 1 : getStep(state)),
                {endedWait}};
    default:
        break;
    }
    return getUsual(state);
}

Board::MainWindow* findWindow()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<Board::MainWindow*>(widget)) {
            return window;
        }
    }
    return nullptr;
}

/// Something that a tool says of itself, with a word in it to wait for.
QByteArray getWords(Fault fault)
{
    switch (fault) {
    case Fault::Nul:
        return QByteArray("No\0 Notice\n", 11);
    case Fault::NulAhead:
        return QByteArray("\0Notice\n", 8);
    case Fault::Between:
        return "Notice\nCOMMAND FAILED\n";
    case Fault::Large:
        return QByteArray(100'000, 'x') + "Notice\n";
    case Fault::Garbage:
        return "\xff\xfe\x80Notice\n";
    default:
        break;
    }
    return "Notice\n";
}

QStringList withoutReportsOfTheWorker(QStringList lines)
{
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString& line) { return line.startsWith("Empty result"); }),
                lines.end());
    return lines;
}

} // namespace

/// The cells of the matrix of faults in which the process lives on.
class TestFaultMatrix : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void cleanupTestCase() { endStage(); }
    void everyCellIsWritten();
    void thePageIsUpToDate();
    void aFaultInAState_data();
    void aFaultInAState();
    void aFaultOfTheSearch_data() { addCells(State::Probing, {Outcome::Blocked}); }
    void aFaultOfTheSearch();
    void aSearchThatTakesLongBlocks_data();
    void aSearchThatTakesLongBlocks();
    void aFaultAtTheStart_data() { addCells(State::Starting, {Outcome::Ends, Outcome::EndsNext}); }
    void aFaultAtTheStart();
    void aFaultOfAnIdleTool_data() { addCells(State::Idle, {Outcome::Ends, Outcome::EndsNext}); }
    void aFaultOfAnIdleTool();
    void aFaultWhileClosing_data() { addCells(State::Closing, {}); }
    void aFaultWhileClosing();

private:
    /// The faults that the state meets, but for some outcomes.
    static void addCells(State state, const QVector<Outcome>& others);
    /// A panel that stands, with the board of the bench alone; the same one as long as it is whole.
    Board::KSBaseHandler* takeEngine();
    void endStage();
    /// Makes the window, with its wait ended when it would wait for ever.
    Course start(const Situation& situation, Outcome outcome);
    Course pass(const Situation& situation, Outcome outcome, std::size_t waits);
    /// What makes a wait go on or end, once the tool has been asked.
    void resolve(Outcome outcome);
    /// The tool does nothing but the act, as the `which` of the search path.
    void setSearch(const QByteArray& act);

    std::unique_ptr<Test::Bench> bench;
    std::unique_ptr<Stage> stage;
};

void TestFaultMatrix::init()
{
    if (!bench) {
        bench = std::make_unique<Test::Bench>();
        Situation(bench.get(), State::Idle).prepare({});
    }
}

void TestFaultMatrix::cleanup()
{
    // What the worker has reported at the end of an engine is printed now, and not in the next row.
    QCoreApplication::processEvents();
    Test::TestApplication::get()->takeEscapedExceptions();
    if (!stage) {
        bench.reset();
    }
}

void TestFaultMatrix::endStage()
{
    stage.reset();
    bench.reset();
}

void TestFaultMatrix::addCells(State state, const QVector<Outcome>& others)
{
    QTest::addColumn<Fault>("fault");
    for (const Test::FaultForm& form : Test::FaultMatrix::getFaults()) {
        const Outcome outcome = Test::FaultMatrix::getOutcome(form.fault, state);
        if (outcome != Outcome::NotMet && !others.contains(outcome)) {
            QTest::newRow(qPrintable(form.title)) << form.fault;
        }
    }
}

Board::KSBaseHandler* TestFaultMatrix::takeEngine()
{
    Situation(bench.get(), State::Idle).prepare({});
    if (!stage) {
        stage = std::make_unique<Stage>();
    } else {
        stage->getEngine()->refreshTamsaMap();
    }
    return stage->getEngine();
}

void TestFaultMatrix::everyCellIsWritten()
{
    for (const Test::FaultForm& form : Test::FaultMatrix::getFaults()) {
        QCOMPARE(QString(form.outcomes).remove(' ').size(), Test::getStates().size());
    }
    for (int index = 0; index < Test::getStates().size(); ++index) {
        QCOMPARE(int(Test::getStates().at(index).state), index);
    }
}

void TestFaultMatrix::thePageIsUpToDate()
{
    QFile page(pagePath);
    QVERIFY2(page.open(QIODevice::ReadOnly), pagePath);
    QCOMPARE(QString::fromUtf8(page.readAll()), Test::FaultMatrix::getPage());
}

void TestFaultMatrix::aFaultInAState_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<State>("state");
    const QVector<Outcome> others{Outcome::NotMet, Outcome::Ends, Outcome::EndsNext};
    for (const Test::FaultForm& fault : Test::FaultMatrix::getFaults()) {
        for (const Test::StateForm& state : Test::getStates()) {
            const Outcome outcome = Test::FaultMatrix::getOutcome(fault.fault, state.state);
            if (!state.command.isEmpty() && !others.contains(outcome)) {
                QTest::newRow(qPrintable(fault.title + ": " + state.title))
                    << fault.fault << state.state;
            }
        }
    }
}

void TestFaultMatrix::aFaultInAState()
{
    QFETCH(Fault, fault);
    QFETCH(State, state);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, state);
    const Course expected = getExpected(outcome, fault, state);
    if (state == State::FirstListing) {
        endStage();
        init();
    }
    const Situation situation(bench.get(), state);
    bench->holdAgain();
    const QString trouble = fault == Fault::Late ? bench->hold({}).section('\n', 2)
                                                 : Test::FaultMatrix::getForm(fault).trouble;
    Course course;
    if (state == State::FirstListing) {
        situation.prepare(trouble);
        course = start(situation, outcome);
    } else {
        Board::KSBaseHandler* const engine = takeEngine();
        situation.arm(trouble);
        situation.approach(engine);
        course = pass(situation, outcome, state == State::Nested ? 3 : 1);
    }
    QCOMPARE(course.lines, expected.lines);
    QCOMPARE(course.results, expected.results);
    if (fault == Fault::After || fault == Fault::Between) {
        // All of it, so that none of it meets the next command.
        const QByteArray stray = fault == Fault::After ? "Notice\n" : "Notice\nCOMMAND FAILED\n";
        QTRY_VERIFY_WITH_TIMEOUT(bench->readFile(transcript).contains(stray), 60'000);
        QCOMPARE(stage->getEngine()->getMode(), std::string("Jtag only"));
        QFile::resize(transcript, 0);
    }
}

/// A window is served and its wait goes on; then the tool goes on, or the engine ends.
void TestFaultMatrix::resolve(Outcome outcome)
{
    if (outcome == Outcome::Patient) {
        bench->release();
    } else if (outcome == Outcome::Waits) {
        findWindow()->getKSBaseHandler()->destroy();
    }
}

Course TestFaultMatrix::start(const Situation& situation, Outcome outcome)
{
    Test::ConsoleRecorder recorder;
    QObject context;
    Test::when(
        &context, [&situation] { return situation.isAsked(); },
        [this, outcome] { resolve(outcome); });
    Course course;
    try {
        stage = std::make_unique<Stage>();
    } catch (const Orvex::Exception& failure) {
        course.results +=
            "thrown: " + QString::fromStdString(failure.getMessage()).section(" [", 0, 0);
    }
    course.lines = withoutReportsOfTheWorker(recorder.getLines());
    // Where the tool was found is the machine's.
    course.lines.removeFirst();
    return course;
}

Course TestFaultMatrix::pass(const Situation& situation, Outcome outcome, std::size_t waits)
{
    Test::ConsoleRecorder recorder;
    QObject context;
    const Board::KSBaseHandler* const engine = stage->getEngine();
    Test::when(
        &context,
        [&situation, engine, waits] {
            return situation.isAsked() && engine->getCommandHandlers().getCount() >= waits;
        },
        [this, outcome] { resolve(outcome); });
    Course course;
    course.results = situation.perform(stage->getEngine());
    course.lines = withoutReportsOfTheWorker(recorder.getLines());
    if (outcome == Outcome::Waits) {
        stage.reset();
    }
    return course;
}

void TestFaultMatrix::setSearch(const QByteArray& act)
{
    QDir().mkpath("search");
    const QString which = bench->writeFile("search/which", act);
    QFile::setPermissions(which, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(QFileInfo(which).path()) + ':' + qgetenv("PATH"));
}

namespace
{

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
        return head + "echo Notice; head -c 300000 /dev/zero | tr '\\000' x\n" + answer;
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

} // namespace

void TestFaultMatrix::aFaultOfTheSearch()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Probing);
    endStage();
    init();
    setSearch(getSearch(fault));
    Test::ConsoleRecorder recorder;
    QString refusal;
    try {
        stage = std::make_unique<Stage>();
    } catch (const Orvex::Critical& failure) {
        refusal = QString::fromStdString(failure.getMessage());
    }
    const QStringList lines = recorder.getLines();
    endStage();
    if (outcome == Outcome::NoTool) {
        QCOMPARE(refusal, QString("Cannot found ksbase2_cli in $PATH"));
        QCOMPARE(lines, QStringList());
        return;
    }
    QCOMPARE(lines.mid(1), getUsual(State::FirstListing).lines);
    QVERIFY(lines.first().startsWith(found));
    QCOMPARE(lines.first().startsWith(QString(found) + "Notice"), outcome == Outcome::Passed);
    const bool knowsPlace = fault != Fault::CannotStart;
    QCOMPARE(lines.first().endsWith("/ksbase2_cli"), knowsPlace);
}

void TestFaultMatrix::aSearchThatTakesLongBlocks_data()
{
    QTest::addColumn<Fault>("fault");
    for (const Fault fault : {Fault::Late, Fault::Never}) {
        QCOMPARE(Test::FaultMatrix::getOutcome(fault, State::Probing), Outcome::Blocked);
        QTest::newRow(qPrintable(Test::FaultMatrix::getForm(fault).title)) << fault;
    }
}

void TestFaultMatrix::aSearchThatTakesLongBlocks()
{
    QFETCH(Fault, fault);
    endStage();
    init();
    setSearch("#!/bin/sh\n: > asked\nwhile [ ! -e go ] && kill -0 $PPID 2>/dev/null; do sleep "
              "0.02; done\ncommand -v ksbase2_cli\n");
    QProcess probe;
    probe.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    probe.start(KESTOBOARD_FAULT_PROBE, {"stay"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("asked"), 60'000);
    QCOMPARE(probe.readAllStandardOutput(), QByteArray());
    QVERIFY(!QFile::exists(transcript));
    if (fault == Fault::Late) {
        bench->writeFile("go", {});
        QByteArray said;
        QTRY_VERIFY_WITH_TIMEOUT((said += probe.readAllStandardOutput()).contains(launched),
                                 60'000);
        QVERIFY(said.startsWith(found));
    }
    probe.kill();
    probe.waitForFinished(-1);
    QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
}

void TestFaultMatrix::aFaultAtTheStart()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Starting);
    endStage();
    init();
    bench->writeFile("words", getWords(fault));
    const bool isSilent = outcome == Outcome::Patient || outcome == Outcome::Waits;
    QByteArray act = "cat words >&2\n";
    if (fault == Fault::Late) {
        act = "while [ ! -e go ] && kill -0 $PPID 2>/dev/null; do sleep 0.02; done\n";
    } else if (fault == Fault::Never) {
        act = Test::Scripts::getStay();
    } else if (fault == Fault::CloseErrors) {
        act = "exec 2>&-\n";
    } else if (fault == Fault::Output) {
        act = "cat words\n";
    }
    bench->setTool(Test::Scripts::getStartingTool(act));

    Test::ConsoleRecorder recorder;
    // What is said at the start has come before the first command is sent.
    connect(Orvex::console, &Orvex::Console::messageAdded, &recorder,
            [&](const Orvex::Message& message) {
                const char* const place = fault == Fault::Output ? "done" : transcript;
                const char* const word = fault == Fault::Output ? "" : "Notice\n";
                while (message.text == launched && !isSilent &&
                       !(QFile::exists(place) && bench->readFile(place).contains(word))) {
                    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
                }
            });
    QObject context;
    Test::when(
        &context,
        [this, isSilent] {
            return isSilent && bench->readFile(transcript).contains(">board list\n");
        },
        [this, outcome] {
            bench->writeFile("go", {});
            resolve(outcome);
        });
    QString failure;
    try {
        stage = std::make_unique<Stage>();
    } catch (const Orvex::Exception& thrown) {
        failure = "thrown: " + QString::fromStdString(thrown.getMessage()).section(" [", 0, 0);
    }
    const QStringList lines = withoutReportsOfTheWorker(recorder.getLines()).mid(1);
    endStage();
    if (outcome == Outcome::Waits) {
        QCOMPARE(failure, QString(endedWait));
        QCOMPARE(lines, QStringList(launched));
    } else {
        QCOMPARE(failure, QString());
        QCOMPARE(lines, getUsual(State::FirstListing).lines);
    }
}

void TestFaultMatrix::aFaultOfAnIdleTool()
{
    QFETCH(Fault, fault);
    if (fault == Fault::CloseErrors) {
        endStage();
        init();
        bench->setTool(Test::Scripts::getIdleTool("exec 2>&-\n: > done\n"));
        Board::KSBaseHandler* const engine = takeEngine();
        ::kill(static_cast<pid_t>(engine->findChild<QProcess*>()->processId()), SIGUSR1);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists("done"), 60'000);
        const Situation situation(bench.get(), State::Mode);
        QObject context;
        Test::when(
            &context, [engine] { return engine->isRunning(); },
            [this] { resolve(Outcome::Waits); });
        QCOMPARE(situation.perform(engine), QStringList(endedWait));
        endStage();
        return;
    }
    Board::KSBaseHandler* const engine = takeEngine();
    QFile::resize(transcript, 0);
    // The simulated tool speaks of itself after an answer that nobody waits for any more.
    const Situation situation(bench.get(), State::Raw);
    const bool isOutput = fault == Fault::Output;
    situation.arm(
        isOutput ? Test::FaultMatrix::getForm(fault).trouble
                 : QString("kind = \"after\"\nhex = \"%1\"").arg(QString(getWords(fault).toHex())));
    situation.approach(engine);
    QCOMPARE(situation.perform(engine), getUsual(State::Raw).results);
    Test::ConsoleRecorder recorder;
    if (!isOutput) {
        QTRY_VERIFY_WITH_TIMEOUT(bench->readFile(transcript).contains(getWords(fault)), 60'000);
    }
    QCOMPARE(engine->getMode(), std::string("Jtag only"));
    QCOMPARE(recorder.getLines(), QStringList());
    QVERIFY(!bench->readFile(transcript).contains("aside"));
}

void TestFaultMatrix::aFaultWhileClosing()
{
    QFETCH(Fault, fault);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, State::Closing);
    endStage();
    init();
    bench->writeFile("words", getWords(fault));
    QByteArray act = "cat words >&2\n";
    if (fault == Fault::Late) {
        act = "sleep 0.1\n";
    } else if (fault == Fault::Never) {
        act = Test::Scripts::getStay();
    } else if (fault == Fault::Output) {
        act = "cat words\n";
    } else if (fault == Fault::Exit) {
        act = ": > left; exit 3\n";
    } else if (fault == Fault::Signal) {
        act = ": > left; kill -9 $$\n";
    } else if (fault == Fault::CloseErrors) {
        act = "exec 2>&-\n";
    }
    bench->setTool(fault == Fault::CloseInput
                       ? "#!/bin/sh\nread -r line\nexec <&-\necho 'COMMAND SUCCEEDED' >&2\n" +
                             Test::Scripts::getStay()
                       : Test::Scripts::getTool(act + ": > left\n"));
    stage = std::make_unique<Stage>();
    Test::ConsoleRecorder recorder;
    const QPointer<QProcess> tool = stage->getEngine()->findChild<QProcess*>();
    const auto id = static_cast<pid_t>(tool->processId());
    stage.reset();
    QVERIFY(tool.isNull());
    QVERIFY(::kill(id, 0) != 0);
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(QFile::exists("left"), outcome == Outcome::Left);
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--page") == 0) {
        std::fputs(Test::FaultMatrix::getPage().toUtf8().constData(), stdout);
        return 0;
    }
    Test::TestApplication application(argc, argv);
    TestFaultMatrix test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fault_matrix.moc"
