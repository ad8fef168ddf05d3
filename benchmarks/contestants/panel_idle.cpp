// Leaves the panel alone with its Monitoring page shown, and measures the processor time of that.
//
// Usage: panel_idle SECONDS
#include "Arguments.h"
#include "Figures.h"
#include "FirstPaint.h"

#include "app/LastWords.h"
#include "app/PanelApplication.h"
#include "app/PanelSession.h"

#include <QAbstractButton>
#include <QTimer>

#include <cstdlib>

#include <sys/resource.h>

namespace
{

const double millisecondsPerSecond = 1000;
const double microsecondsPerMillisecond = 1000;
const double secondsPerMinute = 60;
/// Until the page is shown and filled.
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

void showMonitoring()
{
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->objectName() == QLatin1String("monitoringButton")) {
            static_cast<QAbstractButton*>(widget)->click();
        }
    }
}

void measure(long seconds)
{
    const double before = getProcessorTime();
    QTimer::singleShot(static_cast<int>(seconds * millisecondsPerSecond), [before, seconds] {
        Bench::Figures()
            .add("ms_per_minute", (getProcessorTime() - before) * secondsPerMinute / seconds)
            .print();
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
    const Bench::FirstPaint firstPaint([&arguments] {
        showMonitoring();
        QTimer::singleShot(settlingMilliseconds, [&arguments] { measure(arguments.getNumber(0)); });
    });
    return Kestoboard::PanelSession({}).run();
}
