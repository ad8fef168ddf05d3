#include "app/SignalNotifier.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace Kestoboard
{

namespace
{

const int endSignals[] = {SIGINT, SIGTERM, SIGHUP};

// Two signals may be handled on two threads at once.
std::atomic<bool> isReceived{false};
std::atomic<int> writeEnd{-1};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a signal handler must not wait for a lock");

/// A signal handler may do next to nothing: it leaves a byte in a pipe, and the event loop does
/// the rest.
void onSignal(int /*number*/)
{
    const int errorOfInterruptedCode = errno;
    isReceived = true;
    const char byte = 0;
    // A full pipe holds enough bytes to be noticed.
    const ssize_t written = write(writeEnd, &byte, 1);
    static_cast<void>(written);
    errno = errorOfInterruptedCode;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : endSignals) {
        struct sigaction former = {};
        sigaction(number, nullptr, &former);
        // Whoever started the program may have it ignore the end of its terminal.
        if (former.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
}

} // namespace

SignalNotifier::SignalNotifier(QObject* parent)
    : QObject(parent)
    , readEnd(-1)
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    readEnd = ends[0];
    writeEnd = ends[1];
    auto* const notifier = new QSocketNotifier(readEnd, QSocketNotifier::Read, this);
    connect(notifier, SIGNAL(activated(QSocketDescriptor, QSocketNotifier::Type)), this,
            SLOT(read()));
    setHandler(onSignal);
}

SignalNotifier::~SignalNotifier()
{
    if (readEnd < 0) {
        return;
    }
    // The program is ending already.
    setHandler(SIG_IGN);
    delete findChild<QSocketNotifier*>();
    close(readEnd);
    close(writeEnd);
    writeEnd = -1;
}

bool SignalNotifier::hasReceived()
{
    return isReceived;
}

void SignalNotifier::read()
{
    char bytes[16];
    while (::read(readEnd, bytes, sizeof bytes) > 0) {
    }
    emit received();
}

} // namespace Kestoboard
