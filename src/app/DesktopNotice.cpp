#include "app/DesktopNotice.h"

#include "app/Display.h"

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QWidget>

namespace Kestoboard
{

void notify(QWidget* window, const QString& sentence)
{
    if (window->isActiveWindow() || !hasDisplay()) {
        return;
    }
    QApplication::alert(window);
    const QString program = QStandardPaths::findExecutable(QStringLiteral("notify-send"));
    if (!program.isEmpty()) {
        QProcess::startDetached(program, {QStringLiteral("--app-name=Kestoboard"),
                                          QStringLiteral("--icon=kestoboard"),
                                          QStringLiteral("Kestoboard"), sentence});
    }
}

} // namespace Kestoboard
