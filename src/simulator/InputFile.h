#ifndef SIMULATOR_INPUT_FILE_H
#define SIMULATOR_INPUT_FILE_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace Simulator
{

/// Reads the whole of the regular file `path` in blocks, hands each to `onBlock` and returns the
/// number of bytes. Throws Refusal with the system's reason when it cannot be opened or read, or is
/// a folder, a pipe or a device.
std::uint64_t readThrough(const std::string& path,
                          const std::function<void(std::string_view)>& onBlock);

} // namespace Simulator

#endif
