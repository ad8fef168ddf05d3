// Runs a command a number of times through a QProcess, waiting in a nested event loop: the same
// toolkit without the engine.
//
// Usage: qprocess_exchange COUNT COMMAND
#include "Arguments.h"
#include "Figures.h"
#include "Stopwatch.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>

namespace
{

class Client : public QProcess
{
    Q_OBJECT

public:
    Client()
        : transcript(QStringLiteral("ksbase.log"))
    {
        transcript.open(QIODevice::WriteOnly);
        connect(this, &QProcess::readyReadStandardError, this, &Client::take);
        start(QStringLiteral("ksbase2_cli"), {QStringLiteral("-s"), QStringLiteral("-x")});
        waitForStarted(-1);
    }
    ~Client() override
    {
        closeWriteChannel();
        waitForFinished(-1);
    }

    int exchange(const QByteArray& command)
    {
        reply.clear();
        log('>' + command + '\n');
        write(command + '\n');
        loop.exec();
        return reply.size();
    }

private:
    void log(const QByteArray& bytes)
    {
        transcript.write(bytes);
        transcript.flush();
    }

    void take()
    {
        const QByteArray bytes = readAllStandardError();
        log(bytes);
        reply += bytes;
        if (reply.contains("COMMAND SUCCEEDED") || reply.contains("COMMAND FAILED")) {
            loop.quit();
        }
    }

    QFile transcript;
    QByteArray reply;
    QEventLoop loop;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const Bench::Arguments arguments(argc, argv, 2);
    const long count = arguments.getNumber(0);
    const QByteArray command = QByteArray::fromStdString(arguments.getText(1));

    Client client;
    int size = client.exchange(command);
    const Bench::Stopwatch watch;
    for (long number = 0; number < count; ++number) {
        size = client.exchange(command);
    }
    Bench::Figures()
        .add("us", watch.getMicroseconds() / static_cast<double>(count))
        .add("bytes", size)
        .print();
}

#include "qprocess_exchange.moc"
