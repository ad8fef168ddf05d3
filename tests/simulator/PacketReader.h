#ifndef TESTS_SIMULATOR_PACKET_READER_H
#define TESTS_SIMULATOR_PACKET_READER_H

#include <QByteArray>
#include <QByteArrayList>
#include <QProcess>
#include <QString>

/// A run of the simulated tool whose writes on standard error stay apart: each read gives what one
/// write wrote. Up to the size of a page; what a single write has beyond comes as further ones.
class PacketReader : public QProcess
{
public:
    explicit PacketReader(const QString& scenarioPath);
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
