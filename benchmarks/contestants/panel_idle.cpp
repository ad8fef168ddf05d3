// Leaves the panel alone with three boards and its Monitoring page shown, and measures the
// processor time of that.
//
// Usage: panel_idle SECONDS
#include "Arguments.h"
#include "Figures.h"
#include "Require.h"
#include "Stopwatch.h"

#include "app/LastWords.h"
#include "app/PanelApplication.h"
#include "app/PanelSession.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <Board/Tamsa.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <cstdlib>

#include <sys/resource.h>

namespace
{

const double millisecondsPerSecond = 1000;
const double microsecondsPerMillisecond = 1000;
const double secondsPerMinute = 60;
const unsigned long boards = 3;
const int lookMilliseconds = 50;
/// Far above what the boards and the page need: the end of a run that would wait for ever.
const double patienceMilliseconds = 60000;
/// Until the page is filled.
const int settlingMilliseconds = 3000;

double toMilliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * millisecondsPerSecond +
           static_cast<double>(time.tv_usec) / microsecondsPerMillisecond;
}

/// In milliseconds.
double getProcessorTime()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return toMilliseconds(usage.ru_utime) + toMilliseconds(usage.ru_stime);
}

/// The window of the panel, once it is shown; null before.
Board::MainWindow* findWindow()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<Board::MainWindow*>(widget);
        if (window != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

bool hasBoards(const Board::MainWindow& window)
{
    const Board::KSBaseHandler* const engine = window.getKSBaseHandler();
    return engine != nullptr && engine->getTamsas().getCount() == boards;
}

bool showsMonitoring(const Board::MainWindow& window)
{
    const Board::Folio* const folio = window.getFolio();
    return folio->getMonitoringIndex() >= 0 &&
           folio->getCurrentIndex() == folio->getMonitoringIndex();
}

/// Clicks the button of the page as soon as it can be clicked. True when the page shows.
bool showMonitoring(const Board::MainWindow& window)
{
    auto* const button = window.findChild<QAbstractButton*>(QStringLiteral("monitoringButton"));
    if (button != nullptr && button->isEnabled() && !showsMonitoring(window)) {
        button->click();
    }
    return showsMonitoring(window);
}

void measure(const Board::MainWindow& window, long seconds)
{
    const double before = getProcessorTime();
    QTimer::singleShot(static_cast<int>(seconds * millisecondsPerSecond), [=, &window] {
        const double used = getProcessorTime() - before;
        Bench::require(hasBoards(window) && showsMonitoring(window),
                       "the boards and the page were there until the end");
        Bench::Figures().add("ms_per_minute", used * secondsPerMinute / seconds).print();
        std::fflush(stdout);
        std::_Exit(EXIT_SUCCESS);
    });
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 1);
    Kestoboard::PanelApplication::setNames();
    const Kestoboard::PanelApplication application(argc, argv);
    const Kestoboard::LastWords lastWords;
    const Bench::Stopwatch waiting;
    QTimer look;
    // Not while the page that is clicked waits for the tool in an event loop of its own.
    look.setSingleShot(true);
    QObject::connect(&look, &QTimer::timeout, [&] {
        const Board::MainWindow* const window = findWindow();
        if (window != nullptr && hasBoards(*window) && showMonitoring(*window)) {
            QTimer::singleShot(settlingMilliseconds,
                               [=, &arguments] { measure(*window, arguments.getNumber(0)); });
            return;
        }
        Bench::require(waiting.getMilliseconds() < patienceMilliseconds,
                       "the boards and the page come");
        look.start(lookMilliseconds);
    });
    look.start(lookMilliseconds);
    return Kestoboard::PanelSession({}).run();
}
