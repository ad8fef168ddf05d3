#ifndef SUPPORT_SCREEN_H
#define SUPPORT_SCREEN_H

#include <QByteArray>

#include <sys/types.h>

namespace Test
{

/// A display of its own, which nobody sees, for what a window shows only where there is one. It
/// ends with its process, however that ends.
class Screen
{
public:
    /// Returns when the display serves. Needs no application object.
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// What DISPLAY is set to by those who draw there; empty when no display could be started.
    const QByteArray& getName() const { return name; }

private:
    QByteArray name;
    pid_t server;
};

} // namespace Test

#endif
