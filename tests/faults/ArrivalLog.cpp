#include "faults/ArrivalLog.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <foundation/ForEachControler.h>

namespace Test
{

ArrivalLog::ArrivalLog(Board::KSBaseHandler* watchedEngine, const QString& transcript,
                       QueueChecker* toldChecker)
    : engine(watchedEngine)
    , checker(toldChecker)
    , file(transcript)
{
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(transcript));
    }
    readOn();
    sentBefore = sent.size();
    connect(engine, &Board::KSBaseHandler::commandAdded, this, &ArrivalLog::onCommandAdded);
}

QStringList ArrivalLog::getSent()
{
    readOn();
    return sent;
}

void ArrivalLog::onCommandAdded()
{
    readOn();
    const Board::CommandHandler* const handler = getNewest();
    if (handler->getId() == 0) {
        ++firstNumberCount;
    }
    // While a reply is outstanding the next choice is still to be made. Otherwise it may have been
    // made already, and is not yet to be seen.
    const int next = sent.size() - sentBefore + (isAnswered ? 1 : 0);
    checker->arrive(static_cast<int>(handler->getCommandType()),
                    QString::fromStdString(handler->getCommand()), next);
}

/// The one with the highest number: they count up for as long as any command is alive.
const Board::CommandHandler* ArrivalLog::getNewest() const
{
    const Board::CommandHandler* newest = nullptr;
    Board::CommandHandler* handler = nullptr;
    for (Orvex::ForEachControler<Board::CommandHandler*> loop(handler,
                                                              engine->getCommandHandlers());
         loop.next();) {
        if (newest == nullptr || newest->getId() < handler->getId()) {
            newest = handler;
        }
    }
    return newest;
}

void ArrivalLog::readOn()
{
    QByteArray bytes = unfinishedLine + file.readAll();
    const int end = bytes.lastIndexOf('\n') + 1;
    unfinishedLine = bytes.mid(end);
    bytes.truncate(end);
    for (const QByteArray& line : bytes.split('\n')) {
        readLine(line);
    }
}

/// The lines of the tool that a storm meets begin with no ">", and its marks end their lines.
void ArrivalLog::readLine(const QByteArray& line)
{
    if (line.startsWith(">>")) {
        return;
    }
    if (line.startsWith('>')) {
        sent += QString::fromUtf8(line.mid(1));
        isAnswered = false;
    } else if (line.contains("COMMAND SUCCEEDED") || line.contains("COMMAND FAILED")) {
        isAnswered = true;
    }
}

} // namespace Test
