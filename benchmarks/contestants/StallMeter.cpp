#include "StallMeter.h"

#include <QEventLoop>

namespace Bench
{

namespace
{

const int periodMilliseconds = 1;
/// Far above the few milliseconds that the toolkit waits until it paints.
const int settlingMilliseconds = 200;
const double nanosecondsPerMillisecond = 1e6;

} // namespace

StallMeter::StallMeter()
    : longest(0)
{
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &StallMeter::look);
    timer.start(periodMilliseconds);
    sinceLook.start();
}

void StallMeter::settle()
{
    QEventLoop loop;
    QTimer::singleShot(settlingMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double StallMeter::getLongestMilliseconds() const
{
    const double stall =
        static_cast<double>(qMax(longest, sinceLook.nsecsElapsed())) / nanosecondsPerMillisecond;
    return qMax(0.0, stall - periodMilliseconds);
}

void StallMeter::look()
{
    longest = qMax(longest, sinceLook.nsecsElapsed());
    sinceLook.start();
}

} // namespace Bench
