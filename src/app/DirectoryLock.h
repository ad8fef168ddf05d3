#ifndef APP_DIRECTORYLOCK_H
#define APP_DIRECTORYLOCK_H

#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>

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
    /// Whether who works there does so on another computer, or on this one under another name: then
    /// nobody can tell from here whether they still do.
    bool isHeldElsewhere() const;

    /// The file that is there, in the directory, as long as somebody holds it.
    static const char fileName[];

private:
    struct Holder {
        qint64 process = 0;
        QString host;
    };
    /// None where the file does not say it.
    std::optional<Holder> readHolder() const;

    std::unique_ptr<QLockFile> file;
};

} // namespace Kestoboard

#endif
