#include "app/KeptTranscript.h"

#include "app/DirectoryLock.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Kestoboard
{

namespace
{

QString getTranscript(const QString& directory)
{
    return QDir(directory).filePath(QStringLiteral("ksbase.log"));
}

/// A name that no file has yet.
QString getFreeName(const QString& directory)
{
    const QFileInfo transcript(getTranscript(directory));
    if (!transcript.exists()) {
        return {};
    }
    const QString beginning =
        transcript.lastModified().toString(QStringLiteral("'ksbase-'yyyyMMdd-HHmmss-zzz"));
    QString name = beginning + QStringLiteral(".log");
    for (int number = 2; QFileInfo::exists(QDir(directory).filePath(name)); ++number) {
        name = QStringLiteral("%1-%2.log").arg(beginning, QString::number(number));
    }
    return name;
}

} // namespace

KeptTranscript::KeptTranscript(const QString& place)
    : directory(place)
    , name(getFreeName(place))
{
}

bool KeptTranscript::keep() const
{
    const QString transcript = getTranscript(directory);
    DirectoryLock lock;
    if (name.isEmpty() || !QFile::exists(transcript) || !lock.take(directory)) {
        return true;
    }
    // Renamed and not copied: it may be large, and the disk full.
    return QFile::rename(transcript, QDir(directory).filePath(name));
}

} // namespace Kestoboard
