#include "Targets.h"

namespace Fuzz
{

const std::vector<Target>& getTargets()
{
    static const std::vector<Target> targets{
        {"listing", listing},   {"monitor", monitor},   {"replies", replies},
        {"endMark", endMark},   {"split", split},       {"commandFile", commandFile},
        {"settings", settings}, {"scenario", scenario}, {"console", console},
        {"terminal", terminal},
    };
    return targets;
}

} // namespace Fuzz
