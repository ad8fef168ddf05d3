#include "PacketReader.h"

#include <QProcessEnvironment>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace
{

// Only ends a hanging test.
constexpr int longestWaitMs = 60000;

constexpr int largestPacket = 1 << 16;

} // namespace

PacketReader::PacketReader(const QString& scenarioPath, Writes writes)
{
    int ends[2];
    const int mode = writes == Writes::StayApart ? O_DIRECT : 0;
    if (::pipe2(ends, mode | O_CLOEXEC) == 0) {
        readEnd = ends[0];
        writeEnd = ends[1];
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KESTOBOARD_SCENARIO"), scenarioPath);
    setProcessEnvironment(environment);
    start(QStringLiteral(SIMULATED_TOOL), {QStringLiteral("-s"), QStringLiteral("-x")});
    waitForStarted(longestWaitMs);
    ::close(writeEnd);
}

PacketReader::~PacketReader()
{
    kill();
    waitForFinished(longestWaitMs);
    closeReader();
}

QByteArrayList PacketReader::ask(const QByteArray& line, const QByteArray& end)
{
    write(line + "\n");
    waitForBytesWritten(longestWaitMs);
    QByteArrayList packets;
    do {
        packets.append(readPacket());
    } while (!packets.last().isEmpty() && !packets.join().endsWith(end));
    return packets;
}

void PacketReader::closeReader()
{
    if (readEnd >= 0) {
        ::close(readEnd);
        readEnd = -1;
    }
}

void PacketReader::setupChildProcess()
{
    ::dup2(writeEnd, STDERR_FILENO);
}

QByteArray PacketReader::readPacket()
{
    pollfd request{readEnd, POLLIN, 0};
    if (::poll(&request, 1, longestWaitMs) <= 0) {
        return {};
    }
    QByteArray packet(largestPacket, '\0');
    const ssize_t size = ::read(readEnd, packet.data(), static_cast<std::size_t>(packet.size()));
    packet.resize(size < 0 ? 0 : static_cast<int>(size));
    return packet;
}
