#ifndef SUPPORT_SHORTAGE_H
#define SUPPORT_SHORTAGE_H

#include <cstddef>
#include <sys/resource.h>
#include <vector>

namespace Test
{

/// Lowers a limit of this process, and lifts it again at its end. What was started before keeps the
/// limit that it had.
class Limit
{
public:
    Limit(__rlimit_resource limitedResource, rlim_t value);
    ~Limit();
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

private:
    const __rlimit_resource resource;
    rlimit former;
};

/// Of files this process can open only so many more as are left, as long as it lives.
class DescriptorShortage
{
public:
    explicit DescriptorShortage(std::size_t left = 0);
    ~DescriptorShortage();
    DescriptorShortage(const DescriptorShortage&) = delete;
    DescriptorShortage& operator=(const DescriptorShortage&) = delete;

private:
    const Limit limit;
    std::vector<int> taken;
};

/// The address space that this process uses, in bytes.
rlim_t getAddressSpace();

} // namespace Test

#endif
