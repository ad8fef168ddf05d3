#ifndef FAULTS_ARRIVALLOG_H
#define FAULTS_ARRIVALLOG_H

#include "faults/QueueChecker.h"

#include <QFile>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Board
{
class CommandHandler;
class KSBaseHandler;
} // namespace Board

namespace Test
{

/// Tells a checker of every command that joins the queue of an engine, whoever has created it, and
/// how far the conversation with the tool had come at that moment.
///
/// That is read from the transcript: it is written on the thread on which commands come.
class ArrivalLog : public QObject
{
    Q_OBJECT

public:
    /// For an engine that is idle. None of the pointers is owned.
    ArrivalLog(Board::KSBaseHandler* engine, const QString& transcript, QueueChecker* checker);

    /// The commands that were sent before, which the checker knows nothing of.
    int getSentBefore() const { return sentBefore; }
    /// All commands of the transcript, in their order.
    QStringList getSent();
    /// How often the queue stood empty when a command came, so that its number was 0.
    int getFirstNumberCount() const { return firstNumberCount; }

private:
    void onCommandAdded();
    const Board::CommandHandler* getNewest() const;
    void readOn();
    void readLine(const QByteArray& line);

    Board::KSBaseHandler* const engine;
    QueueChecker* const checker;
    QFile file;
    QByteArray unfinishedLine;
    QStringList sent;
    bool isAnswered = true; ///< the mark of the last command's reply has come
    int sentBefore;
    int firstNumberCount = 0;
};

} // namespace Test

#endif
