#include "app/ToolWatch.h"

#include "app/PanelWindow.h"

#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <foundation/Console.h>

namespace Kestoboard
{

ToolWatch::ToolWatch(QObject* parent)
    : QObject(parent)
{
    connect(Orvex::console, &Orvex::Console::messageAdded, this, &ToolWatch::listen);
}

/// A tool that cannot be started comes to its end before anybody could find it.
void ToolWatch::listen(const Orvex::Message& message)
{
    if (!process && message.level == Orvex::Level::Error &&
        message.text == "ksbase2 process has finished. This should not happen") {
        tell();
    }
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
    if (!hasTold) {
        return {};
    }
    if (!process) {
        return tr("The board tool could not be started: it is damaged, or made for another "
                  "machine.");
    }
    if (process->state() != QProcess::NotRunning && process->error() != QProcess::Crashed) {
        return tr("The board tool does not listen any more: %1.").arg(process->errorString());
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
