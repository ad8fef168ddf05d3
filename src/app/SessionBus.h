#ifndef APP_SESSIONBUS_H
#define APP_SESSIONBUS_H

#include <QDBusConnection>

namespace Kestoboard
{

/// The bus of the desktop's session; no connection where there is none.
QDBusConnection getSessionBus();

} // namespace Kestoboard

#endif
