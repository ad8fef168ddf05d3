#include "app/Display.h"

#include <QGuiApplication>

namespace Kestoboard
{

namespace
{

const char platformVariable[] = "QT_QPA_PLATFORM";

bool isSeen(const QByteArray& platform)
{
    return !platform.startsWith("offscreen") && !platform.startsWith("minimal");
}

} // namespace

bool hasDisplay()
{
    if (qGuiApp != nullptr) {
        return isSeen(QGuiApplication::platformName().toLatin1());
    }
    const QByteArray platform = qgetenv(platformVariable);
    if (!platform.isEmpty()) {
        return isSeen(platform);
    }
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool hasPlatform()
{
    return hasDisplay() || !qEnvironmentVariableIsEmpty(platformVariable);
}

void useNoDisplay()
{
    qputenv(platformVariable, "offscreen");
}

} // namespace Kestoboard
