#include "support/PrivateBus.h"

#include <QFile>

#include <cstdio>
#include <string>

namespace Test
{

namespace
{

const char variable[] = "DBUS_SESSION_BUS_ADDRESS";

const char busSettings[] = "<busconfig>\n"
                           "  <type>session</type>\n"
                           "  <listen>unix:tmpdir=/tmp</listen>\n"
                           "  <auth>EXTERNAL</auth>\n"
                           "  <policy context=\"default\">\n"
                           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                           "    <allow eavesdrop=\"true\"/>\n"
                           "    <allow own=\"*\"/>\n"
                           "  </policy>\n"
                           "</busconfig>\n";

/// Returns the path of the file.
std::string writeSettings(const QTemporaryDir& directory)
{
    QFile file(directory.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(busSettings) < 0) {
        std::fputs("The settings of the bus cannot be written.\n", stderr);
    }
    return QFile::encodeName(file.fileName()).toStdString();
}

} // namespace

PrivateBus::PrivateBus()
    : server({"dbus-daemon", "--nofork", "--print-address=1",
              "--config-file=" + writeSettings(directory)})
{
    if (isThere()) {
        qputenv(variable, server.getPlace());
    } else {
        std::fputs("dbus-daemon cannot be started: install it.\n", stderr);
    }
}

PrivateBus::~PrivateBus()
{
    qunsetenv(variable);
}

} // namespace Test
