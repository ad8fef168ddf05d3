#ifndef APP_TRANSCRIPTWATCH_H
#define APP_TRANSCRIPTWATCH_H

#include <QObject>

namespace Board
{
class KSBaseHandler;
} // namespace Board

namespace Kestoboard
{

/// Tells the person when the transcript does not grow any more: the engine goes on without a word
/// when the disk is full.
class TranscriptWatch : public QObject
{
    Q_OBJECT

public:
    /// Watches the transcript in the current directory. The engine outlives the watch.
    TranscriptWatch(const Board::KSBaseHandler* engine, QObject* parent);

private:
    void look();

    qint64 size; ///< bytes, when it was looked at last
    bool hasTold = false;
};

} // namespace Kestoboard

#endif
