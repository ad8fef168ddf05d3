#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include "app/ActivityIndicator.h"

#include <Board/KSBaseHandler.h>

#include <QDateTime>
#include <QRegularExpression>
#include <QStatusBar>

#include <atomic>
#include <cstdint>
#include <ctime>
#include <memory>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

using Board::CommandHandler;
using Test::Bench;
using Test::CommandType;

namespace
{

const std::int64_t hour = 60 * 60;
const std::int64_t year = 365 * 24 * hour;

/// How far the time of day has been moved, in seconds. Any thread may ask for the time.
std::atomic<std::int64_t> shift{0};

void moveClock(std::int64_t seconds)
{
    shift += seconds;
}

} // namespace

// The time of day of this program, in place of the system's: these are found before those of the C
// library. The clocks that only count stay as they are.
extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const auto status = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (status == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) {
        time->tv_sec += shift.load();
    }
    return status;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* time, void* /*zone*/) noexcept
{
    timespec now = {};
    const int status = clock_gettime(CLOCK_REALTIME, &now);
    time->tv_sec = now.tv_sec;
    time->tv_usec = now.tv_nsec / 1000;
    return status;
}

__attribute__((visibility("default"))) std::time_t time(std::time_t* result) noexcept
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (result != nullptr) {
        *result = now.tv_sec;
    }
    return now.tv_sec;
}
}

/// The time of day is set while the panel runs, far ahead or far back: no duration follows it.
class TestClock : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theClockOfThisProgramJumps();
    void durationsDoNotFollowAJump_data();
    void durationsDoNotFollowAJump();

private:
    std::unique_ptr<Bench> bench;
};

void TestClock::init()
{
    bench = std::make_unique<Bench>();
}

void TestClock::cleanup()
{
    bench->release();
    bench.reset();
    shift = 0;
}

void TestClock::theClockOfThisProgramJumps()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    moveClock(-year);
    // An hour's grace, and not to the second.
    QVERIFY(before.secsTo(QDateTime::currentDateTimeUtc()) < -year + hour);
    QVERIFY(before.secsTo(QDateTime::currentDateTimeUtc()) >= -year);
}

void TestClock::durationsDoNotFollowAJump_data()
{
    QTest::addColumn<qint64>("seconds");
    // No whole days: a duration is shown without them.
    QTest::newRow("hours ahead") << qint64(8 * hour);
    QTest::newRow("hours back") << qint64(-8 * hour);
    QTest::newRow("years ahead") << qint64(20 * year + 8 * hour);
    QTest::newRow("years back") << qint64(-20 * year - 8 * hour);
}

void TestClock::durationsDoNotFollowAJump()
{
    QFETCH(qint64, seconds);
    const char command[] = "help";
    bench->setScenario(Bench::board("Aurora") + bench->hold(command));
    const Test::Panel panel;
    panel.getWindow()->show();
    const Kestoboard::ActivityIndicator indicator(panel.getEngine(),
                                                  panel.getWindow()->statusBar());
    CommandHandler* const handler =
        CommandHandler::create(CommandType::Control, command, panel.getEngine());
    QTRY_VERIFY(handler->isRunning());
    moveClock(seconds);
    // The first tick of the command, and what the indicator says then.
    const QRegularExpression tick("^Executing command 'help' \\(00:0\\d:\\d\\d\\)$");
    QTRY_VERIFY(tick.match(panel.getWindow()->statusBar()->currentMessage()).hasMatch());
    const QRegularExpression running("^Running \"help\" \\(\\d:\\d\\d\\)$");
    QTRY_VERIFY2(running.match(indicator.getText()).hasMatch(), qPrintable(indicator.getText()));
    bench->release();
    Board::waitCommandHandlerReady(handler);
    handler->destroy();
    // Less than ten minutes; a jump would have shown hours, or less than nothing.
    const QRegularExpression ended("^\"help\" succeeded after (\\d+\\.\\d s|0:0\\d:\\d\\d)");
    QTRY_VERIFY2(ended.match(indicator.getText()).hasMatch(), qPrintable(indicator.getText()));
}

KESTOBOARD_TEST_MAIN(TestClock)

#include "tst_clock.moc"
