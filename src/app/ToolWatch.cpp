#include "app/ToolWatch.h"

#include "app/PanelWindow.h"

#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>

namespace Kestoboard
{

ToolWatch::ToolWatch(QObject* parent)
    : QObject(parent)
{
}

void ToolWatch::begin()
{
    const Board::MainWindow* const window = getPanelWindow();
    if (window == nullptr || window->getKSBaseHandler() == nullptr || process) {
        return;
    }
    process = window->getKSBaseHandler()->findChild<QProcess*>();
    // The process tells both of these before the end that the engine listens to.
    connect(process, &QProcess::errorOccurred, this, &ToolWatch::tell);
    connect(process, &QProcess::stateChanged, this, [this](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning) {
            tell();
        }
    });
}

QString ToolWatch::getVerdict() const
{
    if (!process || !hasTold) {
        return {};
    }
    if (process->error() == QProcess::FailedToStart) {
        return tr("The board tool could not be started: %1.").arg(process->errorString());
    }
    return getEnd(process->exitStatus(), process->exitCode());
}

QString ToolWatch::getEnd(QProcess::ExitStatus kind, int code)
{
    return kind == QProcess::CrashExit ? tr("The board tool was ended by the signal %1.").arg(code)
                                       : tr("The board tool ended with the status %1.").arg(code);
}

void ToolWatch::tell()
{
    if (!hasTold) {
        hasTold = true;
        emit toolEnded();
    }
}

} // namespace Kestoboard
