#include "support/Shortage.h"

#include <QFile>

#include <sys/eventfd.h>
#include <unistd.h>

namespace Test
{

namespace
{

/// Far above what a test program has open, and soon used up.
const rlim_t mostDescriptors = 512;

} // namespace

Limit::Limit(__rlimit_resource limitedResource, rlim_t value)
    : resource(limitedResource)
    , former{}
{
    if (getrlimit(resource, &former) != 0) {
        qFatal("a limit cannot be read");
    }
    const rlimit lowered{value, former.rlim_max};
    if (setrlimit(resource, &lowered) != 0) {
        qFatal("a limit cannot be lowered");
    }
}

Limit::~Limit()
{
    setrlimit(resource, &former);
}

DescriptorShortage::DescriptorShortage(std::size_t left)
    : limit(RLIMIT_NOFILE, mostDescriptors)
{
    for (int descriptor = eventfd(0, EFD_CLOEXEC); descriptor >= 0;
         descriptor = eventfd(0, EFD_CLOEXEC)) {
        taken.push_back(descriptor);
    }
    for (; left > 0 && !taken.empty(); --left) {
        close(taken.back());
        taken.pop_back();
    }
}

DescriptorShortage::~DescriptorShortage()
{
    for (const int descriptor : taken) {
        close(descriptor);
    }
}

rlim_t getAddressSpace()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("the size of the process cannot be read");
    }
    const qulonglong pages = file.readAll().split(' ').first().toULongLong();
    return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

} // namespace Test
