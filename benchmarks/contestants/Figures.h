#ifndef BENCHMARKS_FIGURES_H
#define BENCHMARKS_FIGURES_H

#include "Require.h"

#include <cstdio>
#include <fstream>
#include <string>

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

/// The most memory that this program has had in use at any time. The usage of resources would count
/// what the process was before it became this program.
inline double getPeakKilobytes()
{
    const std::string name = "VmHWM:";
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, name.size(), name) == 0) {
            return std::stod(line.substr(name.size()));
        }
    }
    require(false, "the system tells the most memory that was in use");
    return 0;
}

} // namespace Bench

#endif
