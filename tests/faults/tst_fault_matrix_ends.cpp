#include "Course.h"
#include "FaultMatrix.h"
#include "Scripts.h"
#include "Situation.h"
#include "support/Bench.h"
#include "support/TestMain.h"

#include <QProcess>

using Test::Fault;
using Test::Outcome;
using Test::Situation;
using Test::State;

Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(State)

namespace
{

const char ended[] = "E: ksbase2 process has finished. This should not happen\n";
/// What the tool says on its standard output, which nobody reads before its end.
const char aside[] = "kind = \"stdout\"\ntext = \"said aside\\n\"|";

/// What the tool does in the fault, after it has said something aside.
QByteArray getAct(Fault fault)
{
    switch (fault) {
    case Fault::Exit:
        return "echo 'last words' >&2; : > done; exit 3\n";
    case Fault::Signal:
        return "echo 'last words' >&2; : > done; kill -9 $$\n";
    case Fault::EndAtStart:
        return "exit 0\n";
    case Fault::CloseInput:
        return QByteArray("exec <&-; : > done\n") + Test::Scripts::getStay();
    default:
        break;
    }
    return {};
}

/// The lines that tell how something came out.
QStringList getVerdicts(const QStringList& lines)
{
    return lines.filter(QRegularExpression("succe|failed"));
}

QStringList getVerdicts(const QByteArray& said)
{
    return getVerdicts(QString::fromUtf8(said).split('\n'));
}

/// That the window stands, and the five steps of its board.
int getVerdictsBefore(State state)
{
    return state == State::FirstListing ? 1 : 6;
}

/// How many steps of a bring-up come before this one.
int getStepsBefore(State state)
{
    return Test::isBringUp(state) ? int(state) - int(State::BringUpSelect) : 0;
}

/// The verdicts of what a tool answers that takes nothing more.
QStringList getVerdictsUpToItsEnd(State state)
{
    if (state == State::FirstListing || state == State::Nested) {
        return {};
    }
    const QStringList usual = getVerdicts(Test::getUsualCourse(state).lines);
    return Test::isBringUp(state) ? QStringList(usual.mid(0, getStepsBefore(state) + 1)) : usual;
}

} // namespace

/// The cells of the matrix of faults in which the process ends: with status 1, and with the last
/// words of the tool on the console.
class TestFaultMatrixEnds : public QObject
{
    Q_OBJECT

private slots:
    void init() { bench = std::make_unique<Test::Bench>(); }
    void cleanup() { bench.reset(); }
    void anEndAtTheStartEndsTheProcess_data();
    void anEndAtTheStartEndsTheProcess();
    void anEndInAStateEndsTheProcess_data() { addCells(Outcome::Ends); }
    void anEndInAStateEndsTheProcess();
    void anInputThatClosesEndsTheProcessAtTheNextCommand_data() { addCells(Outcome::EndsNext); }
    void anInputThatClosesEndsTheProcessAtTheNextCommand();
    void anEndOfAnIdleToolEndsTheProcess_data();
    void anEndOfAnIdleToolEndsTheProcess();
    void aWorkerInMidStepIsEndedBeforeTheProcess();
    void wordsThatNobodyHasReadComeToTheConsole();

private:
    /// The cells of that outcome in which the simulated tool acts.
    static void addCells(Outcome outcome);
    /// The cells of that state in which the process ends.
    static void addCells(State state);
    /// Runs the probe to its end, in a bench that is laid out for the state.
    void run(const QString& part);
    void runInState(State state, const QString& trouble);
    /// The process has ended as promised, the tool having spoken.
    void verifyEnd();

    std::unique_ptr<Test::Bench> bench;
    QProcessEnvironment environment;
    QByteArray said;
    int status = 0;
};

void TestFaultMatrixEnds::addCells(Outcome outcome)
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<State>("state");
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        if (!Test::getForm(cell.state).command.isEmpty() && cell.outcome == outcome) {
            QTest::newRow(qPrintable(cell.title)) << cell.fault << cell.state;
        }
    }
}

void TestFaultMatrixEnds::run(const QString& part)
{
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(KESTOBOARD_FAULT_PROBE, {part});
    QVERIFY(probe.waitForFinished(60'000));
    status = probe.exitStatus() == QProcess::NormalExit ? probe.exitCode() : -1;
    said = probe.readAllStandardOutput();
}

void TestFaultMatrixEnds::runInState(State state, const QString& trouble)
{
    const Situation situation(bench.get(), state);
    environment = QProcessEnvironment::systemEnvironment();
    if (state == State::FirstListing) {
        situation.prepare(trouble);
    } else {
        situation.arm(trouble);
        QFile scenario(qEnvironmentVariable("KESTOBOARD_SCENARIO"));
        QVERIFY(scenario.open(QIODevice::ReadOnly));
        bench->writeFile("armed.toml", scenario.readAll());
        situation.prepare({});
    }
    run(QString::number(static_cast<int>(state)));
}

void TestFaultMatrixEnds::verifyEnd()
{
    QVERIFY2(status == 1, said.constData());
    QCOMPARE(said.count(ended), 1);
    // Nothing is left of standard error, and all of standard output.
    QVERIFY2(said.endsWith(QByteArray(ended) + "\nsaid aside\n\n"), said.constData());
}

void TestFaultMatrixEnds::anEndInAStateEndsTheProcess()
{
    QFETCH(Fault, fault);
    QFETCH(State, state);
    runInState(state, aside + Test::FaultMatrix::getForm(fault).trouble);
    verifyEnd();
    QVERIFY(!said.contains("passed"));
    QVERIFY(bench->readFile("ksbase.log").endsWith("last words\n"));
    QCOMPARE(getVerdicts(said).size(), getVerdictsBefore(state) + getStepsBefore(state));
}

void TestFaultMatrixEnds::anInputThatClosesEndsTheProcessAtTheNextCommand()
{
    QFETCH(Fault, fault);
    QFETCH(State, state);
    runInState(state, aside + Test::FaultMatrix::getForm(fault).trouble);
    verifyEnd();
    const bool hasMore = Test::isBringUp(state) || state == State::FirstListing ||
                         state == State::CommandFile || state == State::Nested;
    // The last step of a bring-up has nothing after it.
    QCOMPARE(said.contains("passed\n"), !hasMore || state == State::BringUpRestore);
    QCOMPARE(getVerdicts(said).mid(getVerdictsBefore(state)), getVerdictsUpToItsEnd(state));
}

void TestFaultMatrixEnds::anEndAtTheStartEndsTheProcess_data()
{
    addCells(State::Starting);
}

void TestFaultMatrixEnds::anEndOfAnIdleToolEndsTheProcess_data()
{
    addCells(State::Idle);
}

void TestFaultMatrixEnds::addCells(State state)
{
    QTest::addColumn<Fault>("fault");
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        if (cell.state == state &&
            (cell.outcome == Outcome::Ends || cell.outcome == Outcome::EndsNext)) {
            QTest::newRow(qPrintable(Test::FaultMatrix::getForm(cell.fault).title)) << cell.fault;
        }
    }
}

void TestFaultMatrixEnds::anEndAtTheStartEndsTheProcess()
{
    QFETCH(Fault, fault);
    const bool starts = fault != Fault::CannotStart;
    bench->setTool(starts ? "#!/bin/sh\necho 'said aside'\n" + getAct(fault)
                          : QByteArray("#!/no/such/interpreter\n"));
    environment = QProcessEnvironment::systemEnvironment();
    if (getAct(fault).contains("done")) {
        environment.insert("KESTOBOARD_TEST_WAITS", "1");
    }
    run("start");
    if (starts) {
        verifyEnd();
    } else {
        QCOMPARE(status, 1);
        QVERIFY2(said.endsWith(QByteArray(ended) + "\n\n"), said.constData());
    }
    QVERIFY(!said.contains("onnected"));
}

void TestFaultMatrixEnds::anEndOfAnIdleToolEndsTheProcess()
{
    QFETCH(Fault, fault);
    bench->setTool(Test::Scripts::getIdleTool("echo 'said aside'\n" + getAct(fault)));
    environment = QProcessEnvironment::systemEnvironment();
    if (fault == Fault::CloseInput) {
        environment.insert("KESTOBOARD_TEST_ASKS", "1");
    }
    run("idle");
    verifyEnd();
    QCOMPARE(getVerdicts(said).size(), 1);
}

void TestFaultMatrixEnds::aWorkerInMidStepIsEndedBeforeTheProcess()
{
    environment = QProcessEnvironment::systemEnvironment();
    run("mid-step");
    QVERIFY2(status == 1, said.constData());
    QVERIFY2(said.contains("the worker is at rest\n"), said.constData());
    QVERIFY2(said.contains("no thread is left\n"), said.constData());
}

void TestFaultMatrixEnds::wordsThatNobodyHasReadComeToTheConsole()
{
    bench->setTool(Test::Scripts::getIdleTool(
        QByteArray("echo 'said aside'; echo 'in trouble' >&2; : > done\n") +
        Test::Scripts::getStay()));
    environment = QProcessEnvironment::systemEnvironment();
    run("unread");
    verifyEnd();
    QVERIFY(bench->readFile("ksbase.log").endsWith("in trouble\n"));
}

KESTOBOARD_TEST_MAIN(TestFaultMatrixEnds)

#include "tst_fault_matrix_ends.moc"
