#ifndef TESTS_SIMULATOR_PACKET_READER_H
#define TESTS_SIMULATOR_PACKET_READER_H

#include <QByteArray>
#include <QByteArrayList>
#include <QProcess>
#include <QString>

/// A run of the simulated tool whose standard error is read write by write.
class PacketReader : public QProcess
{
public:
    enum class Writes {
        /// Each read gives what one write wrote, however late it is. What a write has beyond the
        /// size of a page comes as further ones.
        StayApart,
        /// Each read gives all that was written until then, as with any pipe.
        FlowTogether,
    };

    explicit PacketReader(const QString& scenarioPath, Writes writes = Writes::StayApart);
    ~PacketReader() override;

    /// Sends `line` and gives all writes until they end with `end` together.
    QByteArrayList ask(const QByteArray& line, const QByteArray& end);

    /// From now on nobody reads what the tool writes.
    void closeReader();

protected:
    void setupChildProcess() override;

private:
    QByteArray readPacket();

    int readEnd = -1;
    int writeEnd = -1;
};

#endif
