#ifndef SIMULATOR_FAULT_INJECTOR_H
#define SIMULATOR_FAULT_INJECTOR_H

#include "FaultSetup.h"

#include <string>
#include <vector>

namespace Simulator
{

/// Decides which faults meet a line. Each fault counts for itself the lines that begin with its
/// `command`: it passes over the first `skip` of them and meets the next `times`.
class FaultInjector
{
public:
    /// From now on these faults. One that was there before, with the same keys, goes on counting.
    void setFaults(const std::vector<FaultSetup>& setups);

    /// Counts `line` and gives the faults that meet it, in the order of the scenario.
    std::vector<FaultSetup> takeDue(const std::string& line);

private:
    struct Counted {
        FaultSetup setup;
        long seen;
    };

    std::vector<Counted> faults;
};

} // namespace Simulator

#endif
