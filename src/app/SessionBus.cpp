#include "app/SessionBus.h"

#include <QString>

namespace Kestoboard
{

QDBusConnection getSessionBus()
{
    // Without an address the toolkit would look for a bus elsewhere, and start one in the end.
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ? QDBusConnection(QString())
                                                                   : QDBusConnection::sessionBus();
}

} // namespace Kestoboard
