#include "app/BitstreamPath.h"

#include <foundation/PlainText.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Kestoboard
{

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("Kestoboard::BitstreamPath", text);
}

} // namespace

QString getBitstreamComplaint(const QString& path)
{
    const QFileInfo file(path);
    const QString shown = Orvex::getVisible(QDir::toNativeSeparators(path));
    if (!Orvex::isOneLine(path)) {
        // The board tool takes one line as one command.
        return tr("The path \"%1\" holds a line break, which the board tool cannot take: rename "
                  "the file or its directory.")
            .arg(shown);
    }
    if (!file.exists()) {
        return tr("There is no file \"%1\".").arg(shown);
    }
    if (file.isDir()) {
        return tr("\"%1\" is a directory: name a bitstream file.").arg(shown);
    }
    if (!file.isReadable()) {
        return tr("The file \"%1\" cannot be read: change its rights, or name another one.")
            .arg(shown);
    }
    if (file.size() == 0) {
        return tr("The file \"%1\" is empty: name a bitstream file.").arg(shown);
    }
    return {};
}

} // namespace Kestoboard
