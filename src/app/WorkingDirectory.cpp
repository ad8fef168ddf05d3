#include "app/WorkingDirectory.h"

#include "app/Display.h"
#include "app/MessageBox.h"
#include "app/StartFailure.h"

#include <foundation/PlainText.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace Kestoboard
{

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("Kestoboard::WorkingDirectory", text);
}

} // namespace

bool WorkingDirectory::enter(const QString& path)
{
    QString wanted = path.isEmpty() ? QDir::currentPath() : path;
    while (!wanted.isEmpty()) {
        if (!QDir::setCurrent(wanted)) {
            StartFailure(
                tr("The directory %1 cannot be entered.").arg(QDir::toNativeSeparators(wanted)),
                tr("Change its rights, or name another one with --directory."), false)
                .tell();
            return false;
        }
        if (!Orvex::isOneLine(QDir::currentPath())) {
            // Where nothing is chosen in the browser, its directory goes to the board tool.
            StartFailure(
                tr("The directory \"%1\" has a line break in its name, which the board tool "
                   "cannot take.")
                    .arg(Orvex::getVisible(QDir::currentPath())),
                tr("Rename it, or name another one with --directory."), false)
                .tell();
            return false;
        }
        if (lock.take()) {
            return true;
        }
        wanted = askForAnother();
    }
    return false;
}

QString WorkingDirectory::askForAnother() const
{
    const QString sentence =
        tr("%1 works in %2.").arg(lock.getHolder(), QDir::toNativeSeparators(QDir::currentPath()));
    const QString advice =
        tr("Two panels in one directory would overwrite each other's transcript: "
           "work in another directory.");
    if (!hasDisplay()) {
        writeToStandardError(sentence + QLatin1Char('\n') + advice +
                             tr(" Name it with --directory."));
        return {};
    }
    QMessageBox box(QMessageBox::Warning, tr("Directory in use"), {});
    setWords(&box, sentence, advice);
    box.setObjectName(QStringLiteral("directoryInUse"));
    QPushButton* const choose =
        box.addButton(tr("Choose another directory…"), QMessageBox::AcceptRole);
    box.addButton(tr("Quit"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() != choose) {
        return {};
    }
    return QFileDialog::getExistingDirectory(nullptr, tr("Directory to work in"),
                                             QDir::currentPath());
}

} // namespace Kestoboard
