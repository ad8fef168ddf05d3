#include "app/TranscriptWatch.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>

#include <QDir>
#include <QFileInfo>

namespace Kestoboard
{

namespace
{

QFileInfo getTranscript()
{
    return QFileInfo(QDir::current(), QStringLiteral("ksbase.log"));
}

} // namespace

TranscriptWatch::TranscriptWatch(const Board::KSBaseHandler* engine, QObject* parent)
    : QObject(parent)
    , size(getTranscript().size())
{
    connect(engine, &Board::KSBaseHandler::commandDone, this, &TranscriptWatch::look);
}

/// Each command leaves at least its own line.
void TranscriptWatch::look()
{
    const QFileInfo transcript = getTranscript();
    const qint64 last = size;
    size = transcript.size();
    if (size > last) {
        hasTold = false;
    } else if (!hasTold) {
        hasTold = true;
        const QString sentence =
            transcript.exists()
                ? tr("The transcript %1 cannot be written any more: make room on its disk. What "
                     "is said until then may be missing in it.")
                : tr("The transcript %1 has gone: what is said from now on is kept nowhere else "
                     "than here. Start again to begin a new one.");
        Orvex::console->warning(
            sentence.arg(QDir::toNativeSeparators(transcript.absoluteFilePath()))
                .toUtf8()
                .constData(),
            "");
    }
}

} // namespace Kestoboard
