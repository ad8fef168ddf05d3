#ifndef BENCHMARKS_FIGURES_H
#define BENCHMARKS_FIGURES_H

#include <cstdio>
#include <string>

#include <sys/resource.h>

namespace Bench
{

/// What a contestant has measured, printed as one line of JSON.
class Figures
{
public:
    Figures& add(const char* name, double value)
    {
        line += (line.empty() ? "\"" : ", \"") + std::string(name) + "\": " + std::to_string(value);
        return *this;
    }
    void print() const { std::printf("{%s}\n", line.c_str()); }

private:
    std::string line;
};

/// The most memory that this process has had in use at any time.
inline double getPeakKilobytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss);
}

} // namespace Bench

#endif
