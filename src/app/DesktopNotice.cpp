#include "app/DesktopNotice.h"

#include <foundation/PlainText.h>

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QWidget>

namespace Kestoboard
{

QString getNoticeBody(const QString& sentence)
{
    return Orvex::getVisible(sentence)
        .replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .toHtmlEscaped();
}

void notify(QWidget* window, const QString& sentence)
{
    if (window->isActiveWindow()) {
        return;
    }
    QApplication::alert(window);
    const QString program = QStandardPaths::findExecutable(QStringLiteral("notify-send"));
    if (!program.isEmpty()) {
        QProcess::startDetached(program, {QStringLiteral("--app-name=Kestoboard"),
                                          QStringLiteral("--icon=kestoboard"), QStringLiteral("--"),
                                          QStringLiteral("Kestoboard"), getNoticeBody(sentence)});
    }
}

} // namespace Kestoboard
