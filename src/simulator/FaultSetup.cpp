#include "FaultSetup.h"

#include <tuple>

namespace Simulator
{

namespace
{

auto getFields(const FaultSetup& fault)
{
    return std::tie(fault.kind, fault.command, fault.note, fault.skip, fault.times, fault.delayMs,
                    fault.pauseMs, fault.every, fault.bytes, fault.number, fault.at, fault.text,
                    fault.file);
}

} // namespace

bool operator==(const FaultSetup& left, const FaultSetup& right)
{
    return getFields(left) == getFields(right);
}

} // namespace Simulator
