#include "FirstPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <fstream>
#include <utility>

#include <unistd.h>

namespace Bench
{

namespace
{

const double nanosecondsPerMillisecond = 1e6;
const double bytesPerKilobyte = 1024;

} // namespace

FirstPaint::FirstPaint(std::function<void()> workAfter)
    : work(std::move(workAfter))
{
    QCoreApplication::instance()->installEventFilter(this);
}

double FirstPaint::getMillisecondsSince(qint64 moment)
{
    const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<double>(now.count() - moment) / nanosecondsPerMillisecond;
}

double FirstPaint::getResidentKilobytes()
{
    std::ifstream pages("/proc/self/statm");
    long all = 0;
    long resident = 0;
    pages >> all >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / bytesPerKilobyte;
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow()) {
        QCoreApplication::instance()->removeEventFilter(this);
        QTimer::singleShot(0, this, work);
    }
    return false;
}

} // namespace Bench
