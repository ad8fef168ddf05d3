#include "app/DirectoryLock.h"

#include <QCoreApplication>
#include <QDir>

namespace Kestoboard
{

bool DirectoryLock::take(const QString& directory)
{
    file =
        std::make_unique<QLockFile>(QDir(directory).filePath(QStringLiteral(".kestoboard.lock")));
    // A panel may run for days; only one whose process is gone has left a stale lock.
    file->setStaleLockTime(0);
    return file->tryLock(0) || file->error() != QLockFile::LockFailedError;
}

void DirectoryLock::release()
{
    file.reset();
}

QString DirectoryLock::getHolder() const
{
    qint64 process = 0;
    QString host;
    QString application;
    if (!file || !file->getLockInfo(&process, &host, &application)) {
        return QCoreApplication::translate("Kestoboard::DirectoryLock", "Another Kestoboard");
    }
    return QCoreApplication::translate("Kestoboard::DirectoryLock",
                                       "Another Kestoboard (process %1 on %2)")
        .arg(QString::number(process), host);
}

} // namespace Kestoboard
