#include "StartReport.h"

#include "Figures.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace Bench
{

namespace
{

/// What the first turns of the event loop do belongs to the start.
const int settlingMilliseconds = 500;

} // namespace

StartReport::StartReport(qint64 start)
    : firstPaint([start] {
        const double time = FirstPaint::getMillisecondsSince(start);
        QTimer::singleShot(settlingMilliseconds, [time] {
            Figures()
                .add("ms", time)
                .add("resident_kb", FirstPaint::getResidentKilobytes())
                .print();
            std::fflush(stdout);
            std::_Exit(EXIT_SUCCESS);
        });
    })
{
}

} // namespace Bench
