#ifndef SUPPORT_PRIVATEBUS_H
#define SUPPORT_PRIVATEBUS_H

#include "support/Server.h"

#include <QTemporaryDir>

namespace Test
{

/// A bus of the desktop's session that only this process uses, without services that could be
/// started. It is the one of the environment for as long as it lives.
class PrivateBus
{
public:
    /// Comes after the application object, which takes the bus of the desktop away. Says on
    /// standard error when there can be none.
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isThere() const { return !server.getPlace().isEmpty(); }

private:
    QTemporaryDir directory;
    Server server;
};

} // namespace Test

#endif
