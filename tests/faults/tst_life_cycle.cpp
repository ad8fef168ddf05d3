#include "Course.h"
#include "Scripts.h"
#include "Situation.h"
#include "Stage.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <foundation/Exception.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <thread>

using Test::Course;
using Test::Outcome;
using Test::Situation;
using Test::Stage;
using Test::State;

Q_DECLARE_METATYPE(State)

namespace
{

const char launched[] = "Kestoboard succesfully launched";

/// Lines that tell how something came out.
QStringList getVerdicts(const QStringList& lines)
{
    return lines.filter(QRegularExpression("succes|failed|Disconnected"));
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
    void aWindowHasNoEngineBeforeThatIsMade();
    void aSearchServesNothing_data();
    void aSearchServesNothing();
    void aWindowThatClosesWhileItIsMadeIsMade_data() { addStatesOfTheStart(); }
    void aWindowThatClosesWhileItIsMadeIsMade();
    void anEngineThatIsDestroyedWhileTheWindowIsMadeEndsThat_data() { addStatesOfTheStart(); }
    void anEngineThatIsDestroyedWhileTheWindowIsMadeEndsThat();
    void anApplicationThatLeavesWhileTheWindowIsMadeEndsThat_data() { addStatesOfTheStart(); }
    void anApplicationThatLeavesWhileTheWindowIsMadeEndsThat();
    void aWindowWithoutItsEngineDoesNothing();
    void aWaitWithoutItsEngineReturnsAtOnce();
    void anApplicationThatLeavesShowsNoVerdict_data() { addWaitingStates(); }
    void anApplicationThatLeavesShowsNoVerdict();
    void aSecondWindowWorksLikeTheFirst_data();
    void aSecondWindowWorksLikeTheFirst();
    void aWindowThatIsNeverShownWorks();

private:
    static void addWaitingStates();
    /// The states in which the window is being made and something is served.
    static void addStatesOfTheStart();
    /// Makes the stage, with its tool held back in the state until the disturbance has been done.
    /// Returns what was thrown, empty when nothing was.
    template <class Disturbance>
    QString make(State state, Disturbance disturb);
    QString makeStage();
    static void verifyEndedWait(const Course& course, State state);
    /// Goes through the state on the engine of the stage, with its command held back until the
    /// disturbance has been done in the wait.
    template <class Disturbance>
    Course run(const Stage& stage, State state, Disturbance disturb);
    /// What the state comes to when nothing happens meanwhile; found out once.
    Course runPlainly(State state);

    QMap<State, Course> plainCourses;
    std::unique_ptr<Test::Bench> bench;
    std::unique_ptr<Stage> made;
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
    made.reset();
    bench.reset();
    // What the worker has reported at the end of an engine is printed now, and not in the next row.
    QCoreApplication::processEvents();
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
    const Course course = run(stage, state, [this, &stage, state] {
        Situation(bench.get(), state).letGo();
        // What the tool answers from now on is read by nobody.
        bench->release();
        stage.destroyEngine();
    });
    QVERIFY(stage.getWindow()->getKSBaseHandler() == nullptr);
    verifyEndedWait(course, state);
}

/// No verdict was told on the command that was waited for, and no step was taken after it.
void TestLifeCycle::verifyEndedWait(const Course& course, State state)
{
    const Course expected = Test::getExpectedCourse(Outcome::Waits, Test::Fault::Never, state);
    QCOMPARE(Test::abridge(course.lines), expected.lines);
    QCOMPARE(course.results, expected.results);
    // The waits within the wait threw as well, out of the slots that they stood in.
    const int inner = state == State::Nested ? 2 : 0;
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions().size(), inner);
}

void TestLifeCycle::addStatesOfTheStart()
{
    QTest::addColumn<State>("state");
    for (const State state : {State::Starting, State::FirstListing}) {
        QTest::newRow(qPrintable(Test::getForm(state).title)) << state;
    }
}

template <class Disturbance>
QString TestLifeCycle::make(State state, Disturbance disturb)
{
    const Situation situation(bench.get(), State::FirstListing);
    const bool isStarting = state == State::Starting;
    if (isStarting) {
        bench->setTool(Test::Scripts::getStartingTool(Test::Scripts::getPause()));
    } else {
        // As the bench writes it, without the command that the situation adds.
        situation.prepare(bench->hold({}).section('\n', 2));
    }
    QObject context;
    Test::when(
        &context,
        [&] {
            return isStarting ? bench->readFile("ksbase.log").endsWith(">board list\n")
                              : situation.isAsked();
        },
        [&] {
            const bool isAsked = situation.isAsked();
            bench->release();
            bench->writeFile("go", {});
            QCOMPARE(isAsked, !isStarting);
            disturb();
        });
    return makeStage();
}

QString TestLifeCycle::makeStage()
{
    try {
        made = std::make_unique<Stage>();
    } catch (const Orvex::Exception& failure) {
        return QString::fromStdString(failure.getMessage()).section(" [", 0, 0);
    }
    return {};
}

void TestLifeCycle::aWindowThatClosesWhileItIsMadeIsMade()
{
    QFETCH(State, state);
    Test::ConsoleRecorder recorder;
    const QString failure = make(state, [] {
        Board::MainWindow* const window = Test::findWindow();
        window->show();
        QVERIFY(window->close());
    });
    QCOMPARE(failure, QString());
    QCOMPARE(Test::abridge(recorder.getLines()).mid(1),
             Test::getUsualCourse(State::FirstListing).lines);
    QVERIFY(!made->getWindow()->isVisible());
    QVERIFY(run(*made, State::Mode, [] {}) == Test::getUsualCourse(State::Mode));
}

void TestLifeCycle::anEngineThatIsDestroyedWhileTheWindowIsMadeEndsThat()
{
    QFETCH(State, state);
    Test::ConsoleRecorder recorder;
    const QString failure = make(state, [] { Test::findWindow()->getKSBaseHandler()->destroy(); });
    QCOMPARE(failure, QString(Test::endedWait));
    QVERIFY(Test::findWindow() == nullptr);
    QCOMPARE(Test::abridge(recorder.getLines()).mid(1), QStringList(launched));
}

void TestLifeCycle::anApplicationThatLeavesWhileTheWindowIsMadeEndsThat()
{
    QFETCH(State, state);
    Test::ConsoleRecorder recorder;
    QPointer<Board::KSBaseHandler> engine;
    QString failure;
    QTimer::singleShot(0, this, [&] {
        failure = make(state, [&engine] {
            engine = Test::findWindow()->getKSBaseHandler();
            QCoreApplication::quit();
        });
    });
    QCoreApplication::exec();
    QCOMPARE(failure, QString(Test::endedWait));
    QVERIFY(Test::findWindow() == nullptr);
    QCOMPARE(Test::abridge(recorder.getLines()).mid(1), QStringList(launched));
    // It would go with the process.
    QVERIFY(engine);
    QVERIFY(engine->getCommandHandlers().isEmpty());
    engine->destroy();
}

/// Whoever hears the first line of the console can find the window, which has no engine yet.
void TestLifeCycle::aWindowHasNoEngineBeforeThatIsMade()
{
    QVector<Board::KSBaseHandler*> engines;
    QObject context;
    connect(Orvex::console, &Orvex::Console::messageAdded, &context,
            [&engines] { engines += Test::findWindow()->getKSBaseHandler(); });
    // Where there was something else before.
    const auto place = std::make_unique<std::byte[]>(sizeof(Board::MainWindow));
    std::fill_n(place.get(), sizeof(Board::MainWindow), std::byte{0xAA});
    auto* const window = new (place.get()) Board::MainWindow;
    QVERIFY(engines.size() > 1);
    QVERIFY(engines.first() == nullptr);
    QVERIFY(engines.last() == window->getKSBaseHandler());
    const QPointer<Board::KSBaseHandler> engine = window->getKSBaseHandler();
    window->~MainWindow();
    engine->destroy();
}

void TestLifeCycle::aSearchServesNothing_data()
{
    QTest::addColumn<bool>("isLeft");
    QTest::newRow("the window closes") << false;
    QTest::newRow("the application leaves") << true;
}

/// While the tool is looked for the program stands still; what was asked meanwhile is done then.
void TestLifeCycle::aSearchServesNothing()
{
    QFETCH(bool, isLeft);
    bench->setSearch(Test::Scripts::getLateSearch());
    std::atomic<bool> isServed{false};
    bool wasServed = true;
    std::thread watcher([&] {
        while (!QFile::exists("asked")) {
            QThread::msleep(1);
        }
        wasServed = isServed;
        bench->writeFile("go", {});
    });
    Test::ConsoleRecorder recorder;
    QPointer<Board::KSBaseHandler> engine;
    QString failure;
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [&] {
            isServed = true;
            engine = Test::findWindow()->getKSBaseHandler();
            Test::findWindow()->close();
            if (isLeft) {
                QCoreApplication::quit();
            }
        });
        failure = makeStage();
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    watcher.join();
    QVERIFY(!wasServed);
    QVERIFY(isServed);
    QCOMPARE(failure, isLeft ? QString(Test::endedWait) : QString());
    QCOMPARE(Test::abridge(recorder.getLines()).mid(1),
             isLeft ? QStringList(launched) : Test::getUsualCourse(State::FirstListing).lines);
    if (isLeft) {
        QVERIFY(engine);
        engine->destroy();
    }
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
    const Stage stage;
    Course course;
    // In the application's own loop, since only that can be left and entered again.
    QTimer::singleShot(0, this,
                       [&] { course = run(stage, state, [] { QCoreApplication::quit(); }); });
    QCoreApplication::exec();
    verifyEndedWait(course, state);
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
