#ifndef APP_WORKINGDIRECTORY_H
#define APP_WORKINGDIRECTORY_H

#include "app/DirectoryLock.h"

#include <QCoreApplication>
#include <QString>

class QMessageBox;

namespace Kestoboard
{

/// The directory that the panel works in, held against other panels.
class WorkingDirectory
{
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::WorkingDirectory)

public:
    /// Makes a directory the current one, an empty path leaving the one that is, and takes it. Asks
    /// for another one when a panel works there already.
    ///
    /// Returns false when there is no directory to work in; the person has been told.
    bool enter(const QString& path);
    /// The directory that the person has chosen when asked for another one; empty if nobody asked.
    const QString& getChosen() const { return chosen; }
    /// Lets the directory go; it stays the current one.
    void leave() { lock.release(); }

    /// The question for another directory than the current one, in which the holder works; not
    /// shown yet, and owned by the caller. Where the holder may have gone without a trace, it says
    /// what to do then.
    static QMessageBox* makeBox(const QString& holder, bool mayHaveGone = false);

private:
    QString askForAnother() const;
    static QString getComplaint(const QString& holder);
    static QString getAdvice(bool mayHaveGone);

    DirectoryLock lock;
    QString chosen;
};

} // namespace Kestoboard

#endif
