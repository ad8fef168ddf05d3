#include "FaultSetup.h"

#include <map>
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

std::optional<FaultKind> getFaultKind(const std::string& name)
{
    static const std::map<std::string, FaultKind> kinds{
        {"late", FaultKind::Late},
        {"hold", FaultKind::Hold},
        {"never", FaultKind::Never},
        {"refused", FaultKind::Refused},
        {"split", FaultKind::Split},
        {"nul", FaultKind::Nul},
        {"garbage", FaultKind::Garbage},
        {"before", FaultKind::Before},
        {"after", FaultKind::After},
        {"large", FaultKind::Large},
        {"stdout", FaultKind::Stdout},
        {"exit", FaultKind::Exit},
        {"kill", FaultKind::Kill},
        {"reply", FaultKind::Reply},
        {"close_stdin", FaultKind::CloseStdin},
        {"close_stderr", FaultKind::CloseStderr},
    };
    const auto found = kinds.find(name);
    return found == kinds.end() ? std::nullopt : std::make_optional(found->second);
}

} // namespace Simulator
