#include "app/DirectoryLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QSysInfo>

namespace Kestoboard
{

const char DirectoryLock::fileName[] = ".kestoboard.lock";

bool DirectoryLock::take(const QString& directory)
{
    file = std::make_unique<QLockFile>(QDir(directory).filePath(QLatin1String(fileName)));
    // A panel may run for days; only one whose process is gone has left a stale lock.
    file->setStaleLockTime(0);
    if (file->tryLock(0) || file->error() != QLockFile::LockFailedError) {
        return true;
    }
    // A file that names nobody, as a computer leaves it that loses its power, would keep everybody
    // out for ever. It goes unless a process has it locked.
    return !readHolder() && file->removeStaleLockFile() && file->tryLock(0);
}

void DirectoryLock::release()
{
    file.reset();
}

std::optional<DirectoryLock::Holder> DirectoryLock::readHolder() const
{
    Holder holder;
    QString application;
    if (!file || !file->getLockInfo(&holder.process, &holder.host, &application)) {
        return std::nullopt;
    }
    return holder;
}

QString DirectoryLock::getHolder() const
{
    const std::optional<Holder> holder = readHolder();
    if (!holder) {
        return QCoreApplication::translate("Kestoboard::DirectoryLock", "Another Kestoboard");
    }
    return QCoreApplication::translate("Kestoboard::DirectoryLock",
                                       "Another Kestoboard (process %1 on %2)")
        .arg(QString::number(holder->process), holder->host);
}

bool DirectoryLock::isHeldElsewhere() const
{
    const std::optional<Holder> holder = readHolder();
    return holder && holder->host != QSysInfo::machineHostName();
}

} // namespace Kestoboard
