#include "InputFile.h"

#include "Descriptor.h"
#include "Refusal.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace Simulator
{

namespace
{

constexpr std::size_t blockSize = 1 << 20;

[[noreturn]] void refuse(int reason)
{
    throw Refusal(std::generic_category().message(reason));
}

// A pipe or a device could block the tool for ever, so only regular files pass.
void requireRegular(int descriptor)
{
    struct stat status {
    };
    if (::fstat(descriptor, &status) != 0) {
        refuse(errno);
    }
    if (S_ISDIR(status.st_mode)) {
        refuse(EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        throw Refusal("Not a regular file");
    }
}

} // namespace

std::uint64_t readThrough(const std::string& path,
                          const std::function<void(std::string_view)>& onBlock)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen()) {
        refuse(errno);
    }
    requireRegular(file.get());

    std::vector<char> block(blockSize);
    std::uint64_t total = 0;
    for (;;) {
        const ssize_t count = ::read(file.get(), block.data(), block.size());
        if (count == 0) {
            return total;
        }
        if (count < 0) {
            refuse(errno);
        }
        total += static_cast<std::uint64_t>(count);
        onBlock(std::string_view(block.data(), static_cast<std::size_t>(count)));
    }
}

} // namespace Simulator
