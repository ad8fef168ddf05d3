#ifndef BENCHMARKS_STOPWATCH_H
#define BENCHMARKS_STOPWATCH_H

#include <chrono>

namespace Bench
{

/// The time since its construction.
class Stopwatch
{
public:
    double getMicroseconds() const
    {
        return std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
    }
    double getMilliseconds() const { return getMicroseconds() / 1000; }
    double getNanoseconds() const { return getMicroseconds() * 1000; }

private:
    using Clock = std::chrono::steady_clock;

    const Clock::time_point begin = Clock::now();
};

} // namespace Bench

#endif
