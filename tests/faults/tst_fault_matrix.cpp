#include "Course.h"
#include "Scene.h"
#include "Situation.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <QFile>

#include <cstdio>

using Test::Course;
using Test::Fault;
using Test::Outcome;
using Test::Situation;
using Test::State;

Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(State)

namespace
{

const char pagePath[] = KESTOBOARD_DOCS "/fault-matrix.md";
const char transcript[] = "ksbase.log";

} // namespace

/// The cells of the matrix of faults in which the tool answers, sooner or later and in whatever
/// way.
class TestFaultMatrix : public QObject
{
    Q_OBJECT

private slots:
    void init() { scene.begin(); }
    void cleanup() { scene.finish(); }
    void cleanupTestCase() { scene.end(); }
    void everyCellIsWritten();
    void thePageIsUpToDate();
    void aFaultInAState_data();
    void aFaultInAState();

private:
    /// Makes the window, which goes through the state on its own.
    Course start(const Situation& situation, Outcome outcome);
    /// Has the panel that stands go through the state.
    Course pass(const Situation& situation, Outcome outcome, std::size_t waits);
    /// Lets the tool go on where it is late.
    void resolve(Outcome outcome);
    /// Takes out what comes after a mark, and so belongs to this answer, to the next one or to
    /// none: that is a matter of the moment.
    static void removeStray(Fault fault, QStringList* lines);
    /// Waits for what follows an answer, so that none of it meets the next command.
    void awaitStray(Fault fault);

    Test::Scene scene;
};

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
    const QVector<Outcome> others{Outcome::Waits, Outcome::Ends, Outcome::EndsNext};
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        if (!Test::getForm(cell.state).command.isEmpty() && !others.contains(cell.outcome)) {
            QTest::newRow(qPrintable(cell.title)) << cell.fault << cell.state;
        }
    }
}

void TestFaultMatrix::aFaultInAState()
{
    QFETCH(Fault, fault);
    QFETCH(State, state);
    const Outcome outcome = Test::FaultMatrix::getOutcome(fault, state);
    if (state == State::FirstListing) {
        scene.renew();
    }
    Test::Bench* const bench = scene.getBench();
    const Situation situation(bench, state);
    bench->holdAgain();
    const QString trouble = fault == Fault::Late ? bench->hold({}).section('\n', 2)
                                                 : Test::FaultMatrix::getTrouble(fault, state);
    Course course;
    if (state == State::FirstListing) {
        situation.prepare(trouble);
        course = start(situation, outcome);
    } else {
        Board::KSBaseHandler* const engine = scene.takeEngine();
        situation.arm(trouble);
        situation.approach(engine);
        course = pass(situation, outcome, state == State::Nested ? 3 : 1);
    }
    removeStray(fault, &course.lines);
    const Course expected = Test::getExpectedCourse(outcome, fault, state);
    QCOMPARE(Test::abridge(course.lines), expected.lines);
    QCOMPARE(course.results, expected.results);
    awaitStray(fault);
}

void TestFaultMatrix::removeStray(Fault fault, QStringList* lines)
{
    if (fault == Fault::After) {
        lines->removeAll("  Notice");
    } else if (fault == Fault::Split) {
        // The line end after the mark comes by itself.
        lines->removeAll("  ");
    }
}

void TestFaultMatrix::awaitStray(Fault fault)
{
    if (fault != Fault::After && fault != Fault::Between) {
        return;
    }
    const QByteArray stray = fault == Fault::After ? "Notice\n" : "Notice\nCOMMAND FAILED\n";
    QTRY_VERIFY(scene.getBench()->readFile(transcript).contains(stray));
    QCOMPARE(scene.getStage()->getEngine()->getMode(), std::string("Jtag only"));
    QFile::resize(transcript, 0);
}

void TestFaultMatrix::resolve(Outcome outcome)
{
    if (outcome == Outcome::Patient) {
        scene.getBench()->release();
    }
}

Course TestFaultMatrix::start(const Situation& situation, Outcome outcome)
{
    Test::ConsoleRecorder recorder;
    QObject context;
    Test::when(
        &context, [&situation] { return situation.isAsked(); },
        [this, outcome] { resolve(outcome); });
    const QString failure = scene.makeStage();
    // Where the tool was found is the machine's.
    return {recorder.getLines().mid(1), failure.isEmpty() ? QStringList() : QStringList(failure)};
}

Course TestFaultMatrix::pass(const Situation& situation, Outcome outcome, std::size_t waits)
{
    Test::ConsoleRecorder recorder;
    QObject context;
    Board::KSBaseHandler* const engine = scene.getStage()->getEngine();
    Test::when(
        &context,
        [&situation, engine, waits] {
            return situation.isAsked() && engine->getCommandHandlers().getCount() >= waits;
        },
        [this, outcome] { resolve(outcome); });
    const QStringList results = situation.perform(engine);
    return {recorder.getLines(), results};
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
