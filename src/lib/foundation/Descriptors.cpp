#include <foundation/Descriptors.h>

#include <sys/eventfd.h>
#include <unistd.h>

namespace Orvex
{

bool hasFreeDescriptors(int count)
{
    if (count <= 0) {
        return true;
    }
    // What the event loop opens, and so a limit of any kind shows.
    const int descriptor = eventfd(0, EFD_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool hasOthers = hasFreeDescriptors(count - 1);
    close(descriptor);
    return hasOthers;
}

} // namespace Orvex
