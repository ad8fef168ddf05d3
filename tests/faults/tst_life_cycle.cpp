#include "Situation.h"
#include "Stage.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <foundation/Exception.h>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

using Test::Situation;
using Test::Stage;
using Test::State;

Q_DECLARE_METATYPE(State)

namespace
{

const char endedWait[] = "thrown: The wait for a reply has ended without one";

/// What a state came to: the lines of the console, and what was read or thrown.
struct Course {
    QStringList lines;
    QStringList results;
};

bool operator==(const Course& left, const Course& right)
{
    return left.lines == right.lines && left.results == right.results;
}

/// Lines that tell how something came out.
QStringList getVerdicts(const QStringList& lines)
{
    return lines.filter(QRegularExpression("succes|failed|Disconnected"));
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

} // namespace

/// A panel whose window, engine or application ends at any moment.
class TestLifeCycle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aWindowThatClosesChangesNothing_data() { addWaitingStates(); }
    void aWindowThatClosesChangesNothing();
    void aWindowThatIsDeletedChangesNothing_data() { addWaitingStates(); }
    void aWindowThatIsDeletedChangesNothing();
    void anEngineThatIsDestroyedEndsItsWaits_data() { addWaitingStates(); }
    void anEngineThatIsDestroyedEndsItsWaits();
    void anEngineThatIsDestroyedInItsFirstListingEndsIt();
    void aWindowWithoutItsEngineDoesNothing();
    void aWaitWithoutItsEngineReturnsAtOnce();
    void anApplicationThatLeavesShowsNoVerdict_data() { addWaitingStates(); }
    void anApplicationThatLeavesShowsNoVerdict();
    void aSecondWindowWorksLikeTheFirst_data();
    void aSecondWindowWorksLikeTheFirst();
    void aWindowThatIsNeverShownWorks();

private:
    static void addWaitingStates();
    /// Goes through the state on the engine of the stage, with its command held back until the
    /// disturbance has been done in the wait.
    template <class Disturbance>
    Course run(const Stage& stage, State state, Disturbance disturb);
    /// What the state comes to when nothing happens meanwhile; found out once.
    Course runPlainly(State state);

    QMap<State, Course> plainCourses;
    std::unique_ptr<Test::Bench> bench;
};

void TestLifeCycle::init()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
    bench = std::make_unique<Test::Bench>();
    Situation(bench.get(), State::Idle).prepare({});
}

void TestLifeCycle::cleanup()
{
    bench->release();
    bench.reset();
}

void TestLifeCycle::addWaitingStates()
{
    QTest::addColumn<State>("state");
    for (const State state : Test::getWaitingStates()) {
        QTest::newRow(qPrintable(Test::getForm(state).title)) << state;
    }
}

template <class Disturbance>
Course TestLifeCycle::run(const Stage& stage, State state, Disturbance disturb)
{
    const Situation situation(bench.get(), state);
    Board::KSBaseHandler* const engine = stage.getEngine();
    bench->holdAgain();
    // As the bench writes it, without the command that the situation adds.
    situation.arm(bench->hold({}).section('\n', 2));
    situation.approach(engine);
    Test::ConsoleRecorder recorder;
    QObject context;
    const std::size_t waits = state == State::Nested ? 3 : 1;
    Test::when(
        &context,
        [&] { return situation.isAsked() && engine->getCommandHandlers().getCount() == waits; },
        [&] {
            disturb();
            bench->release();
        });
    Course course;
    course.results = situation.perform(engine);
    course.lines = recorder.getLines();
    return course;
}

Course TestLifeCycle::runPlainly(State state)
{
    if (!plainCourses.contains(state)) {
        const Stage stage;
        stage.getWindow()->show();
        plainCourses.insert(state, run(stage, state, [] {}));
        Situation(bench.get(), State::Idle).prepare({});
    }
    return plainCourses.value(state);
}

void TestLifeCycle::aWindowThatClosesChangesNothing()
{
    QFETCH(State, state);
    const Course plain = runPlainly(state);
    QVERIFY(!plain.lines.isEmpty() || !plain.results.isEmpty() || state == State::Listing);
    const Stage stage;
    stage.getWindow()->show();
    const Course course = run(stage, state, [&stage] { stage.getWindow()->close(); });
    QVERIFY(!stage.getWindow()->isVisible());
    QCOMPARE(course.lines, plain.lines);
    QCOMPARE(course.results, plain.results);
}

void TestLifeCycle::aWindowThatIsDeletedChangesNothing()
{
    QFETCH(State, state);
    const Course plain = runPlainly(state);
    Stage stage;
    stage.getWindow()->show();
    const Course course = run(stage, state, [&stage] { stage.deleteWindow(); });
    QVERIFY(stage.getWindow() == nullptr);
    QCOMPARE(course.lines, plain.lines);
    QCOMPARE(course.results, plain.results);
    // The engine works on.
    QVERIFY(run(stage, State::Mode, [] {}) == runPlainly(State::Mode));
}

void TestLifeCycle::anEngineThatIsDestroyedEndsItsWaits()
{
    QFETCH(State, state);
    Stage stage;
    stage.getWindow()->show();
    const QStringList before = Test::isBringUp(state) ? runPlainly(state).lines : QStringList();
    const Course course = run(stage, state, [this, &stage] {
        // What the tool answers from now on is read by nobody.
        bench->release();
        stage.destroyEngine();
    });
    QVERIFY(stage.getWindow()->getKSBaseHandler() == nullptr);
    QCOMPARE(course.results.filter(endedWait), QStringList(endedWait));
    // Of a bring-up, the steps before; and no verdict on the command that was waited for.
    const QStringList verdicts = getVerdicts(course.lines);
    QVERIFY(verdicts.size() <= qMax(0, before.size() - 1));
    QCOMPARE(verdicts, getVerdicts(before).mid(0, verdicts.size()));
    // The waits within the wait threw as well, out of the slots that they stood in.
    const int inner = state == State::Nested ? 2 : 0;
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions().size(), inner);
}

void TestLifeCycle::anEngineThatIsDestroyedInItsFirstListingEndsIt()
{
    const Situation situation(bench.get(), State::FirstListing);
    situation.prepare("kind = \"never\"");
    QObject context;
    Test::when(
        &context, [&situation] { return situation.isAsked(); },
        [] { findWindow()->getKSBaseHandler()->destroy(); });
    Test::ConsoleRecorder recorder;
    try {
        const Stage stage;
        QFAIL("the window was made");
    } catch (const Orvex::Exception& failure) {
        QCOMPARE("thrown: " + QString::fromStdString(failure.getMessage()).section(" [", 0, 0),
                 QString(endedWait));
    }
    QVERIFY(findWindow() == nullptr);
    QCOMPARE(recorder.getLines().filter("onnected"), QStringList());
}

void TestLifeCycle::aWindowWithoutItsEngineDoesNothing()
{
    const Test::DebugMode debugMode(true);
    bench->writeFile("some.cmd", "help\n");
    Stage stage;
    Board::MainWindow* const window = stage.getWindow();
    window->show();
    stage.destroyEngine();
    Test::ConsoleRecorder recorder;
    for (QPushButton* const button : window->findChildren<QPushButton*>()) {
        button->click();
    }
    for (QCheckBox* const box : window->findChildren<QCheckBox*>()) {
        box->click();
    }
    for (QComboBox* const box : window->findChildren<QComboBox*>()) {
        box->setCurrentIndex(box->count() - 1);
    }
    for (const char* const slot : {"onSendCommand", "onHelp", "refreshFileButton"}) {
        QVERIFY(QMetaObject::invokeMethod(window, slot));
    }
    QCOMPARE(getVerdicts(recorder.getLines()), QStringList());
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions(), QStringList());
}

void TestLifeCycle::aWaitWithoutItsEngineReturnsAtOnce()
{
    Stage stage;
    Board::CommandHandler* const handler = Board::CommandHandler::create(
        Board::CommandHandler::CommandType::Control, "help", stage.getEngine());
    stage.destroyEngine();
    Board::waitCommandHandlerReady(handler);
    QVERIFY(!handler->hasFinished());
    handler->destroy();
}

void TestLifeCycle::anApplicationThatLeavesShowsNoVerdict()
{
    QFETCH(State, state);
    const QStringList before = Test::isBringUp(state) ? runPlainly(state).lines : QStringList();
    const Stage stage;
    Course course;
    // In the application's own loop, since only that can be left and entered again.
    QTimer::singleShot(0, this,
                       [&] { course = run(stage, state, [] { QCoreApplication::quit(); }); });
    QCoreApplication::exec();
    QCOMPARE(course.results.filter(endedWait), QStringList(endedWait));
    const QStringList verdicts = getVerdicts(course.lines);
    QVERIFY(verdicts.size() <= qMax(0, before.size() - 1));
    QCOMPARE(verdicts, getVerdicts(before).mid(0, verdicts.size()));
    const int inner = state == State::Nested ? 2 : 0;
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions().size(), inner);
    QVERIFY(stage.getEngine()->getCommandHandlers().isEmpty());
}

void TestLifeCycle::aSecondWindowWorksLikeTheFirst_data()
{
    QTest::addColumn<bool>("endsEngine");
    QTest::newRow("the first engine ended") << true;
    QTest::newRow("the first engine lives on") << false;
}

void TestLifeCycle::aSecondWindowWorksLikeTheFirst()
{
    QFETCH(bool, endsEngine);
    Test::ConsoleRecorder recorder;
    Stage first;
    first.getWindow()->show();
    const QStringList firstLines = recorder.takeLines();
    first.deleteWindow();
    if (endsEngine) {
        first.destroyEngine();
    }
    const Stage second;
    second.getWindow()->show();
    QCOMPARE(recorder.takeLines(), firstLines);
    QVERIFY(second.getEngine() != nullptr);
    QVERIFY(second.getEngine() != first.getEngine());
    for (const State state : {State::SetForceBit, State::Mode, State::Nested}) {
        QVERIFY(run(second, state, [] {}) == runPlainly(state));
    }
    if (!endsEngine) {
        QVERIFY(run(first, State::Mode, [] {}) == runPlainly(State::Mode));
    }
}

void TestLifeCycle::aWindowThatIsNeverShownWorks()
{
    const Stage stage;
    for (const State state : Test::getWaitingStates()) {
        const Course plain = runPlainly(state);
        const Course course = run(stage, state, [] {});
        QCOMPARE(course.lines, plain.lines);
        QCOMPARE(course.results, plain.results);
        // The new board of a bring-up leaves again.
        Situation(bench.get(), State::Idle).prepare({});
        stage.getEngine()->refreshTamsaMap();
    }
    QVERIFY(!stage.getWindow()->isVisible());
}

KESTOBOARD_TEST_MAIN(TestLifeCycle)

#include "tst_life_cycle.moc"
