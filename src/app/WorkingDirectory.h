#ifndef APP_WORKINGDIRECTORY_H
#define APP_WORKINGDIRECTORY_H

#include "app/DirectoryLock.h"

#include <QString>

namespace Kestoboard
{

/// The directory that the panel works in, held against other panels.
class WorkingDirectory
{
public:
    /// Makes a directory the current one, an empty path leaving the one that is, and takes it. Asks
    /// for another one when a panel works there already.
    ///
    /// Returns false when there is no directory to work in; the person has been told.
    bool enter(const QString& path);
    /// Lets the directory go; it stays the current one.
    void leave() { lock.release(); }

private:
    QString askForAnother() const;

    DirectoryLock lock;
};

} // namespace Kestoboard

#endif
