#include "Output.h"

#include "Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Simulator
{

namespace
{

// A descriptor that is shared with the starter of the program can be in non-blocking mode.
bool waitUntilWritable(int descriptor)
{
    pollfd request{descriptor, POLLOUT, 0};
    return ::poll(&request, 1, -1) >= 0 || errno == EINTR;
}

} // namespace

void Output::write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(number, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            if (!waitUntilWritable(number)) {
                return;
            }
        } else if (errno != EINTR) {
            return;
        }
    }
}

bool Output::hasUnread() const
{
    // A terminal would answer the same request with the number of bytes typed ahead.
    struct stat status {
    };
    int unread = 0;
    return ::fstat(number, &status) == 0 && S_ISFIFO(status.st_mode) &&
           ::ioctl(number, FIONREAD, &unread) == 0 && unread > 0;
}

bool Output::isAbandoned() const
{
    pollfd request{number, 0, 0};
    return ::poll(&request, 1, 0) > 0 && (request.revents & POLLERR) != 0;
}

void disconnect(int descriptor)
{
    const Descriptor nowhere(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (nowhere.isOpen()) {
        ::dup2(nowhere.get(), descriptor);
    }
}

} // namespace Simulator
