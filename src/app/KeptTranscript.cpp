#include "app/KeptTranscript.h"

#include "app/DirectoryLock.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace Kestoboard
{

bool keepTranscript(const QString& directory)
{
    const QDir place(directory);
    const QString transcript = place.filePath(QStringLiteral("ksbase.log"));
    DirectoryLock lock;
    if (!QFile::exists(transcript) || !lock.take(directory)) {
        return true;
    }
    const QString now =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    // Renamed and not copied: it may be large, and the disk full.
    return QFile::rename(transcript, place.filePath(QStringLiteral("ksbase-%1.log").arg(now)));
}

} // namespace Kestoboard
