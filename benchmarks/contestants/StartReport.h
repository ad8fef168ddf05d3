#ifndef BENCHMARKS_STARTREPORT_H
#define BENCHMARKS_STARTREPORT_H

#include "FirstPaint.h"

namespace Bench
{

/// Prints how long the process took until its first window was painted and the memory that it has
/// shortly after, and ends the process. Needs the QApplication.
class StartReport
{
public:
    /// The moment of the process's start, in nanoseconds of the system's monotonic clock.
    explicit StartReport(qint64 start);

private:
    const FirstPaint firstPaint;
};

} // namespace Bench

#endif
