#include "app/Display.h"

#include "app/Shutdown.h"
#include "app/StartFailure.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>

namespace Kestoboard
{

namespace
{

const char platformVariable[] = "QT_QPA_PLATFORM";

bool isSeen(const QByteArray& platform)
{
    return !platform.startsWith("offscreen") && !platform.startsWith("minimal");
}

void onMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtFatalMsg) {
        writeToStandardError(QCoreApplication::translate(
            "Kestoboard::Display", "The display cannot be opened: start the panel in a desktop "
                                   "session, or save pictures of its pages with --tour DIR."));
        endProcess(EXIT_FAILURE);
    }
    std::fprintf(stderr, "%s\n", getTerminalText(message).constData());
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

DisplayGuard::DisplayGuard()
{
    qInstallMessageHandler(onMessage);
}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(nullptr);
}

} // namespace Kestoboard
