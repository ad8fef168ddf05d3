// A panel that stands for days, its clock run ahead: what it holds at the end is what it held after
// the first hour.

#include "faults/Footprint.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/RunSize.h"
#include "support/TestMain.h"

#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>
#include <application/ConsoleWidget.h>
#include <application/FileSystemBrowser.h>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QProcess>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

#include <memory>

using Test::Bench;
using Test::Footprint;

namespace
{

// The panel's clock: a poll every 5 s, a reading every 10 s.
const int hoursPerDay = 24;
const int pollsPerHour = 720;
const int pollsPerReading = 2;
// What happens to it: a board leaves or returns every 5 minutes, a load every 10.
const int pollsPerFlap = 60;
const int pollsPerLoad = 120;

/// How much more memory may be resident at the end than after the first hour. The allocator's free
/// pieces lie differently each time.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TEST_IS_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(TEST_IS_SANITIZED)
const qint64 memoryMargin = 320 * 1024; // the sanitizer holds freed memory back
#else
const qint64 memoryMargin = 4 * 1024;
#endif

/// Likewise of the memory in use, in KiB: a hash that grows, a longer text. A sanitizer has a heap
/// of its own, of which nothing is known here.
qint64 getHeapMargin()
{
    return getRunSize(64, 512);
}

/// By then whatever is there for a moment only has gone.
const int settleTime = 5'000;

int getHours()
{
    if (qEnvironmentVariableIsSet("KESTOBOARD_SOAK_DAYS")) {
        return qMax(1, qEnvironmentVariable("KESTOBOARD_SOAK_DAYS").toInt()) * hoursPerDay;
    }
    return getRunSize(2, 30 * hoursPerDay);
}

QString getBoard(const QString& name, const QString& moreKeys = {})
{
    return Bench::board(name, moreKeys +
                                  "[[board.channel]]\nname = \"VCore\"\nvoltage = 1.0\n"
                                  "current = 0.35\n[[board.channel]]\nname = \"Temperature\"\n"
                                  "value = \"41.5°C\"\ndrift = true\n");
}

void fire(QTimer* timer)
{
    // As the clock does it: the receivers find the timer as the sender.
    QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
}

} // namespace

class TestSoak : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aPanelThatStandsForDaysHoldsWhatItHeldAfterAnHour();

private:
    template <class Child>
    Child* find(const char* name) const;
    void plug(bool hasFlappingBoard);
    void openPanel();
    void fillConsole(int lines);
    void passHour(int hour);
    void passPoll(int poll);
    void load();
    Footprint measure();
    int countConsoleLines() const;
    void useWindow();

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::Panel> panel;
    Zandu::ConsoleWidget* console = nullptr;
    QTimer* commandFileTimer = nullptr;
};

void TestSoak::init()
{
    bench = std::make_unique<Bench>();
    bench->writeFile("design.ksb", QByteArray(4096, 'k'));
}

void TestSoak::cleanup()
{
    panel.reset();
    bench.reset();
}

template <class Child>
Child* TestSoak::find(const char* name) const
{
    auto* const child = panel->getWindow()->findChild<Child*>(QLatin1String(name));
    if (child == nullptr) {
        qFatal("there is no %s", name);
    }
    return child;
}

void TestSoak::plug(bool hasFlappingBoard)
{
    bench->setScenario(getBoard("KS-Dev A", "selected = true\n") + getBoard("KS-Dev B") +
                       (hasFlappingBoard ? getBoard("KS-Dev C") : QString()));
}

void TestSoak::openPanel()
{
    plug(true);
    panel = std::make_unique<Test::Panel>();
    panel->getWindow()->show();
    panel->getPollTimer()->start();
    console = panel->find<Zandu::ConsoleWidget>();
    commandFileTimer =
        panel->getWindow()->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    auto* const pages = panel->find<Board::BrowseFolio>();
    pages->raiseLeaf(static_cast<unsigned long>(pages->getBrowseIndex()));
    auto* const browser = panel->find<Zandu::FileSystemBrowser>();
    browser->setSelectedFile(bench->getPath("design.ksb"));
    QTRY_VERIFY(browser->getSelectedItems().getFirst() ==
                bench->getPath("design.ksb").toStdString());
    find<QToolButton>("monitoringButton")->click();
}

/// As it is after some days: lines leave it as fast as they come. Each is shown by itself, since a
/// line that has been shown takes more memory than one that has not.
void TestSoak::fillConsole(int lines)
{
    console->setLineLimit(lines);
    for (int line = 0; line < lines; ++line) {
        Orvex::console->print("Refreshing monitoring table", "");
        QCoreApplication::processEvents();
    }
}

void TestSoak::passHour(int hour)
{
    for (int poll = 0; poll < pollsPerHour; ++poll) {
        passPoll(hour * pollsPerHour + poll);
    }
}

/// The five seconds from one poll to the next, without the waiting.
void TestSoak::passPoll(int poll)
{
    if (poll % pollsPerFlap == 0) {
        plug(poll / pollsPerFlap % 2 != 0);
    }
    fire(panel->getPollTimer());
    fire(commandFileTimer);
    if (poll % pollsPerReading == 0) {
        fire(panel->find<Board::MonitoringLeaf>()->findChild<QTimer*>());
    }
    if (poll % pollsPerLoad == pollsPerLoad / 2) {
        load();
    }
    QCoreApplication::processEvents();
}

void TestSoak::load()
{
    find<QToolButton>("bitstreamButton")->click();
    find<QPushButton>("loadButton")->click();
    find<QToolButton>("monitoringButton")->click();
}

/// The console is at its bound then, and nothing is under way.
Footprint TestSoak::measure()
{
    console->getText();
    console->setLineLimit(console->getLineLimit());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // A thread that has ended is still to be seen for a moment, and so is what it had open; and a
    // text in the status bar has a timer.
    const QStatusBar* const statusBar = panel->getWindow()->statusBar();
    Footprint footprint;
    for (int same = 0; same < 10;) {
        QTest::qWait(5);
        const Footprint next = Footprint::measure({panel->getEngine()});
        const bool isSame = next.hasSameCounts(footprint) && statusBar->currentMessage().isEmpty();
        same = isSame ? same + 1 : 0;
        footprint = next;
    }
    return footprint;
}

int TestSoak::countConsoleLines() const
{
    return console->getText().count('\n') + 1;
}

/// Turns a page, changes a setting, and sees both done.
void TestSoak::useWindow()
{
    QElapsedTimer clock;
    clock.start();
    const int before = bench->count("board set force_bit on");
    find<QToolButton>("basicButton")->click();
    QCOMPARE(panel->getFolio()->getCurrentIndex(), long(panel->getFolio()->getBasicIndex()));
    find<QCheckBox>("forceModeCheckBox")->click();
    QCOMPARE(bench->count("board set force_bit on"), before + 1);
    QVERIFY(console->getText().endsWith("Force bit successfully set to on"));
    qInfo("a page turned, a bit set and its verdict on the console in %lld ms", clock.elapsed());
}

void TestSoak::aPanelThatStandsForDaysHoldsWhatItHeldAfterAnHour()
{
    const int hours = getHours();
    openPanel();
    const int lineLimit = getRunSize(2000, 20'000);
    fillConsole(lineLimit);
    const qint64 tool = panel->getEngine()->findChild<QProcess*>()->processId();
    QElapsedTimer clock;
    clock.start();

    passHour(0);
    const Footprint first = measure();
    const qint64 firstOfTool = Test::getResidentKiB(tool);
    qInfo("after 1 h: %s; the tool %lld KiB", qPrintable(first.toText()), firstOfTool);
    for (int hour = 1; hour < hours; ++hour) {
        passHour(hour);
        QVERIFY(countConsoleLines() <= lineLimit + lineLimit / 10);
        if (hour % hoursPerDay == 0) {
            qInfo("after %d d: %s", hour / hoursPerDay, qPrintable(measure().toText()));
        }
    }
    Footprint last = measure();
    qInfo("after %d h: %s; the tool %lld KiB; %d polls in %.1f s", hours, qPrintable(last.toText()),
          Test::getResidentKiB(tool), hours * pollsPerHour, double(clock.elapsed()) / 1000);

    // What is more for a moment only is no leak.
    if (!last.hasSameCounts(first)) {
        QTRY_VERIFY_WITH_TIMEOUT((last = measure()).hasSameCounts(first), settleTime);
    }
    QVERIFY2(last.residentKiB <= first.residentKiB + memoryMargin,
             qPrintable(QString("%1 KiB, after %2").arg(last.residentKiB).arg(first.residentKiB)));
    QVERIFY2(
        last.allocatedKiB <= first.allocatedKiB + getHeapMargin(),
        qPrintable(
            QString("%1 KiB in use, after %2").arg(last.allocatedKiB).arg(first.allocatedKiB)));
    QVERIFY(countConsoleLines() <= lineLimit);
    QVERIFY(bench->count("board list") >= hours * pollsPerHour);
    QVERIFY(bench->count("board monitor get 0") >= hours * pollsPerHour / pollsPerReading);
    QCOMPARE(bench->count("chip bitstream load " + bench->getPath("design.ksb")),
             hours * pollsPerHour / pollsPerLoad);
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions(), QStringList());
    useWindow();
}

KESTOBOARD_TEST_MAIN(TestSoak)
#include "tst_soak.moc"
