#include "support/TestApplication.h"

#include <foundation/Debug.h>
#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QSettings>

#include <exception>
#include <utility>

namespace Test
{

TestApplication::TestApplication(int& argc, char** argv)
    : QApplication(argc, argv)
    , theme(Orvex::Theme::Scheme::Light)
{
    setOrganizationName(QStringLiteral("KestoboardTest"));
    setApplicationName(QStringLiteral("Test"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDirectory.path());
    Orvex::console = &console;
    Orvex::theme = &theme;
    Zandu::application = &application;
}

TestApplication::~TestApplication()
{
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
