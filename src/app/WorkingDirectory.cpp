#include "app/WorkingDirectory.h"

#include "app/Display.h"
#include "app/MessageBox.h"
#include "app/StartFailure.h"

#include <application/FileDialogLook.h>
#include <foundation/PlainText.h>
#include <foundation/Theme.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

#include <memory>

namespace Kestoboard
{

namespace
{

const int boxIconSize = 48;

} // namespace

bool WorkingDirectory::enter(const QString& path)
{
    QString wanted = path.isEmpty() ? QDir::currentPath() : path;
    while (!wanted.isEmpty()) {
        if (!QDir::setCurrent(wanted)) {
            StartFailure(
                tr("The directory %1 cannot be entered.").arg(QDir::toNativeSeparators(wanted)),
                tr("Change its rights, or its name where that is no text, or name another one "
                   "with --directory."),
                false)
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
        chosen = askForAnother();
        wanted = chosen;
    }
    return false;
}

QString WorkingDirectory::askForAnother() const
{
    const std::unique_ptr<QMessageBox> box(
        hasDisplay() ? makeBox(lock.getHolder(), lock.isHeldElsewhere()) : nullptr);
    if (box == nullptr) {
        writeToStandardError(getComplaint(lock.getHolder()) + QLatin1Char('\n') +
                             getAdvice(lock.isHeldElsewhere()) + QLatin1Char(' ') +
                             tr("Name it with --directory."));
        return {};
    }
    box->exec();
    if (box->buttonRole(box->clickedButton()) != QMessageBox::AcceptRole) {
        return {};
    }
    QFileDialog dialog(nullptr, tr("Directory to work in"), QDir::currentPath());
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    Zandu::arrangeFileDialog(&dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QMessageBox* WorkingDirectory::makeBox(const QString& holder, bool mayHaveGone)
{
    auto* const box = new QMessageBox(QMessageBox::NoIcon, tr("Directory in use"), {});
    setWords(box, getComplaint(holder), getAdvice(mayHaveGone));
    box->setIconPixmap(Orvex::theme->getIcon("warning").pixmap(boxIconSize, boxIconSize));
    box->setObjectName(QStringLiteral("directoryInUse"));
    box->setDefaultButton(box->addButton(tr("Choose another directory…"), QMessageBox::AcceptRole));
    box->addButton(tr("Quit"), QMessageBox::RejectRole);
    return box;
}

QString WorkingDirectory::getComplaint(const QString& holder)
{
    return tr("%1 works in %2.").arg(holder, QDir::toNativeSeparators(QDir::currentPath()));
}

QString WorkingDirectory::getAdvice(bool mayHaveGone)
{
    const QString advice = tr("Two panels in one directory would overwrite each other's "
                              "transcript: work in another directory.");
    return mayHaveGone ? tr("If that panel has ended, remove the file %1 there.")
                                 .arg(QLatin1String(DirectoryLock::fileName)) +
                             QLatin1Char(' ') + advice
                       : advice;
}

} // namespace Kestoboard
