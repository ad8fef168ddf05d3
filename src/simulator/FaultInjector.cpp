#include "FaultInjector.h"

#include <algorithm>

namespace Simulator
{

namespace
{

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

void FaultInjector::setFaults(const std::vector<FaultSetup>& setups)
{
    std::vector<Counted> old;
    old.swap(faults);
    for (const FaultSetup& setup : setups) {
        const auto same = std::find_if(old.begin(), old.end(), [&setup](const Counted& counted) {
            return counted.setup == setup;
        });
        if (same == old.end()) {
            faults.push_back({setup, 0});
        } else {
            faults.push_back(*same);
            old.erase(same);
        }
    }
}

std::vector<FaultSetup> FaultInjector::takeDue(const std::string& line)
{
    std::vector<FaultSetup> due;
    for (Counted& fault : faults) {
        const FaultSetup& setup = fault.setup;
        if (!startsWith(line, setup.command)) {
            continue;
        }
        const long position = fault.seen++ - setup.skip;
        if (position >= 0 && (setup.times == 0 || position < setup.times)) {
            due.push_back(setup);
        }
    }
    return due;
}

} // namespace Simulator
