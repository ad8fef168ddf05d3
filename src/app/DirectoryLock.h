#ifndef APP_DIRECTORYLOCK_H
#define APP_DIRECTORYLOCK_H

#include <QLockFile>
#include <QString>

#include <memory>

namespace Kestoboard
{

/// Keeps a second panel out of a directory, where it would overwrite the transcript.
///
/// A directory in which no lock can be made counts as free: whether the transcript can be written
/// there is told elsewhere.
class DirectoryLock
{
public:
    /// Takes a directory, the current one if none is named. False when another panel works there.
    bool take(const QString& directory = QStringLiteral("."));
    /// Lets the directory go.
    void release();
    /// Who works in the directory that could not be taken, in words.
    QString getHolder() const;

private:
    std::unique_ptr<QLockFile> file;
};

} // namespace Kestoboard

#endif
