#include "app/BitstreamPath.h"

#include <foundation/PlainText.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Kestoboard
{

QString getBitstreamComplaint(const QString& path)
{
    const QFileInfo file(path);
    const QString shown = Orvex::getVisible(QDir::toNativeSeparators(path));
    if (!Orvex::isOneLine(path)) {
        // The board tool takes one line as one command.
        return QCoreApplication::translate(
                   "Kestoboard::BitstreamPath",
                   "The path \"%1\" holds a line break, which the board tool cannot take: rename "
                   "the file or its directory.")
            .arg(shown);
    }
    if (!file.exists()) {
        return QCoreApplication::translate("Kestoboard::BitstreamPath", "There is no file \"%1\".")
            .arg(shown);
    }
    if (file.isDir()) {
        return QCoreApplication::translate("Kestoboard::BitstreamPath",
                                           "\"%1\" is a directory: name a bitstream file.")
            .arg(shown);
    }
    if (!file.isReadable()) {
        return QCoreApplication::translate(
                   "Kestoboard::BitstreamPath",
                   "The file \"%1\" cannot be read: change its rights, or name another one.")
            .arg(shown);
    }
    if (file.size() == 0) {
        return QCoreApplication::translate("Kestoboard::BitstreamPath",
                                           "The file \"%1\" is empty: name a bitstream file.")
            .arg(shown);
    }
    return {};
}

} // namespace Kestoboard
