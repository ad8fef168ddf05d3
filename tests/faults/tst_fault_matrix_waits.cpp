#include "Course.h"
#include "Scene.h"
#include "Situation.h"
#include "support/ConsoleRecorder.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/Folio.h>

#include <QProcess>
#include <QSocketNotifier>
#include <QStatusBar>
#include <QToolButton>

using Board::CommandHandler;
using Test::Course;
using Test::Fault;
using Test::Outcome;
using Test::Situation;
using Test::State;

Q_DECLARE_METATYPE(Fault)
Q_DECLARE_METATYPE(State)

namespace
{

const char transcript[] = "ksbase.log";
const char mark[] = "COMMAND SUCCEEDED\n";

/// The engine has seen that the tool has closed its standard error: of what it reads, the other
/// output and the end of the tool are left.
bool isDeaf(const Board::KSBaseHandler& engine)
{
    int readers = 0;
    for (const QSocketNotifier* const notifier :
         engine.findChild<QProcess*>()->findChildren<QSocketNotifier*>()) {
        readers += notifier->isEnabled() && notifier->type() == QSocketNotifier::Read ? 1 : 0;
    }
    return readers == 2;
}

} // namespace

/// The cells of the matrix of faults in which no answer comes: the wait goes on without a verdict,
/// and the window lives. What ends the wait in the end is the end of the engine.
class TestFaultMatrixWaits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init() { scene.begin(); }
    void cleanup() { scene.finish(); }
    void cleanupTestCase() { scene.end(); }
    void theWaitGoesOn_data();
    void theWaitGoesOn();

private:
    Course run(const Situation& situation, Fault fault, State state);
    /// The tool has done all that it does about the command of the state.
    bool isOver(const Situation& situation, Fault fault, State state) const;
    /// What the transcript has of the last command and after.
    QByteArray getLastExchange() const;

    // Each of them leaves a mark in the report of the test when it is not so.
    void verifyTranscript(Fault fault, State state) const;
    static void verifyWait(const Board::KSBaseHandler& engine, std::size_t waits);
    static void verifyTick(Board::KSBaseHandler* engine, State state);
    static void verifyPage(const Board::MainWindow& window);
    void verifyQueue(Board::KSBaseHandler* engine, std::size_t waits) const;
    static void verifyClosing(Board::MainWindow* window);

    Test::Scene scene;
};

void TestFaultMatrixWaits::theWaitGoesOn_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<State>("state");
    for (const Test::Cell& cell : Test::FaultMatrix::getCells()) {
        if (!Test::getForm(cell.state).command.isEmpty() && cell.outcome == Outcome::Waits) {
            QTest::newRow(qPrintable(cell.title)) << cell.fault << cell.state;
        }
    }
}

void TestFaultMatrixWaits::theWaitGoesOn()
{
    QFETCH(Fault, fault);
    QFETCH(State, state);
    if (state == State::FirstListing) {
        scene.renew();
    }
    const Situation situation(scene.getBench(), state);
    const QString trouble = Test::FaultMatrix::getTrouble(fault, state);
    if (state == State::FirstListing) {
        situation.prepare(trouble);
    } else {
        scene.takeEngine();
        situation.arm(trouble);
        situation.approach(scene.getStage()->getEngine());
    }
    const Course course = run(situation, fault, state);
    scene.endStage();
    const Course expected = Test::getExpectedCourse(Outcome::Waits, fault, state);
    QCOMPARE(Test::abridge(course.lines), expected.lines);
    QCOMPARE(course.results, expected.results);
}

Course TestFaultMatrixWaits::run(const Situation& situation, Fault fault, State state)
{
    const std::size_t waits = state == State::Nested ? 3 : 1;
    Test::ConsoleRecorder recorder;
    bool isObserved = false;
    QObject context;
    Test::when(
        &context, [&] { return isOver(situation, fault, state); },
        [&] {
            Board::MainWindow* const window = Test::findWindow();
            Board::KSBaseHandler* const engine = window->getKSBaseHandler();
            const QStringList lines = recorder.getLines();
            verifyTranscript(fault, state);
            verifyTick(engine, state);
            verifyPage(*window);
            verifyQueue(engine, waits);
            verifyClosing(window);
            verifyWait(*engine, waits);
            isObserved = recorder.getLines() == lines;
            engine->destroy();
        });
    Course course;
    if (state == State::FirstListing) {
        course.results += "thrown: " + scene.makeStage();
        course.lines = recorder.getLines().mid(1);
    } else {
        course.results = situation.perform(scene.getStage()->getEngine());
        course.lines = recorder.getLines();
    }
    if (!isObserved) {
        QTest::qFail("the panel said something while it waited", __FILE__, __LINE__);
    }
    return course;
}

bool TestFaultMatrixWaits::isOver(const Situation& situation, Fault fault, State state) const
{
    const Board::MainWindow* const window = Test::findWindow();
    if (window == nullptr || window->getKSBaseHandler() == nullptr || !situation.isAsked()) {
        return false;
    }
    const Board::KSBaseHandler& engine = *window->getKSBaseHandler();
    const std::size_t waits = state == State::Nested ? 3 : 1;
    return engine.getCommandHandlers().getCount() >= waits &&
           (fault != Fault::NulAhead || getLastExchange().endsWith(mark)) &&
           (fault != Fault::CloseErrors || isDeaf(engine));
}

QByteArray TestFaultMatrixWaits::getLastExchange() const
{
    const QByteArray text = scene.getBench()->readFile(transcript);
    return text.mid(text.lastIndexOf("\n>") + 1);
}

void TestFaultMatrixWaits::verifyTranscript(Fault fault, State state) const
{
    const QByteArray exchange = getLastExchange();
    const int lineEnd = exchange.indexOf('\n');
    QVERIFY2(exchange.startsWith('>' + Test::getForm(state).command.toUtf8()), exchange);
    if (fault == Fault::NulAhead) {
        // All of it stands there, and none of it counts.
        QCOMPARE(exchange.at(lineEnd + 1), '\0');
        QVERIFY(exchange.endsWith(mark));
    } else {
        QCOMPARE(exchange.size(), lineEnd + 1);
    }
}

void TestFaultMatrixWaits::verifyWait(const Board::KSBaseHandler& engine, std::size_t waits)
{
    QVERIFY(engine.isRunning());
    // Nothing is on its way that would end it.
    QVERIFY(!engine.getData().contains("COMMAND "));
    QCOMPARE(engine.getCommandHandlers().getCount(), waits);
    QCOMPARE(engine.getCommandHandlers().getPendings().getCount(), waits);
}

/// The seconds go on in the status bar.
void TestFaultMatrixWaits::verifyTick(Board::KSBaseHandler* engine, State state)
{
    const QStatusBar* const bar = Test::findWindow(engine)->statusBar();
    const QString words = "Executing command '" + Test::getForm(state).command;
    engine->onTimeout();
    const QString first = bar->currentMessage();
    QVERIFY2(first.startsWith(words), qPrintable(first));
    engine->onTimeout();
    QVERIFY2(bar->currentMessage().startsWith(words), qPrintable(bar->currentMessage()));
    QVERIFY2(bar->currentMessage() > first, qPrintable(first));
}

void TestFaultMatrixWaits::verifyPage(const Board::MainWindow& window)
{
    const Board::Folio& folio = *window.getFolio();
    window.findChild<QToolButton*>("scopeButton")->click();
    QCOMPARE(folio.getCurrentIndex(), folio.getScopeIndex());
    window.findChild<QToolButton*>("bitstreamButton")->click();
    QCOMPARE(folio.getCurrentIndex(), folio.getBitstreamIndex());
}

/// What is asked meanwhile joins the queue, and may leave it again.
void TestFaultMatrixWaits::verifyQueue(Board::KSBaseHandler* engine, std::size_t waits) const
{
    const QByteArray before = scene.getBench()->getJournalBytes();
    CommandHandler* const handler =
        CommandHandler::create(CommandHandler::CommandType::Control, "board get mode", engine);
    QCoreApplication::processEvents();
    QVERIFY(!handler->isRunning());
    QVERIFY(!handler->hasFinished());
    QCOMPARE(engine->getCommandHandlers().getCount(), waits + 1);
    QCOMPARE(scene.getBench()->getJournalBytes(), before);
    handler->destroy();
}

void TestFaultMatrixWaits::verifyClosing(Board::MainWindow* window)
{
    window->show();
    QVERIFY(window->isVisible());
    QVERIFY(window->close());
    QVERIFY(!window->isVisible());
}

KESTOBOARD_TEST_MAIN(TestFaultMatrixWaits)

#include "tst_fault_matrix_waits.moc"
