#include "support/TestApplication.h"

#include <foundation/Debug.h>
#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QSettings>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace Test
{

namespace
{

/// Settings that nobody would remove: `exit` destroys nothing that lives in `main`.
std::string abandonedSettings;

void removeAbandonedSettings()
{
    if (!abandonedSettings.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(abandonedSettings, ignored);
    }
}

} // namespace

TestApplication::TestApplication(int& argc, char** argv)
    : QApplication(argc, argv)
    , theme(Orvex::Theme::Scheme::Light)
{
    // The desktop of whoever runs the tests has no say in them.
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    setOrganizationName(QStringLiteral("KestoboardTest"));
    setApplicationName(QStringLiteral("Test"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDirectory.path());
    static const bool isRegistered = std::atexit(removeAbandonedSettings) == 0;
    if (isRegistered) {
        abandonedSettings = settingsDirectory.path().toStdString();
    }
    Orvex::console = &console;
    Orvex::theme = &theme;
    Zandu::application = &application;
}

TestApplication::~TestApplication()
{
    abandonedSettings.clear();
    Zandu::application = nullptr;
    Orvex::theme = nullptr;
    Orvex::console = nullptr;
}

bool TestApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const Orvex::Exception& failure) {
        escapedExceptions += Orvex::getReadable(failure.getMessage());
    } catch (const std::exception& failure) {
        escapedExceptions += QString::fromUtf8(failure.what());
    }
    return false;
}

QStringList TestApplication::takeEscapedExceptions()
{
    return std::exchange(escapedExceptions, {});
}

TestApplication* TestApplication::get()
{
    return qobject_cast<TestApplication*>(qApp);
}

DebugMode::DebugMode(bool isOn)
    : wasOn(Orvex::isDebug())
{
    Orvex::setDebug(isOn);
}

DebugMode::~DebugMode()
{
    Orvex::setDebug(wasOn);
}

} // namespace Test
