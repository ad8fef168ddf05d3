// Starts the panel as the program does, and measures the time until its window is painted and the
// memory that it has then.
//
// Usage: panel_start MOMENT, the moment of its start as start_clock.py says it
#include "Arguments.h"
#include "StartReport.h"

#include "app/CommandLine.h"
#include "app/LastWords.h"
#include "app/PanelApplication.h"
#include "app/PanelSession.h"

namespace
{

/// As the program does before it has an application with windows.
Kestoboard::Options readOptions(char** argv)
{
    int argc = 1;
    const QCoreApplication application(argc, argv);
    return Kestoboard::CommandLine(QCoreApplication::arguments()).getOptions();
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 1);
    Kestoboard::PanelApplication::setNames();
    const Kestoboard::Options options = readOptions(argv);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const Kestoboard::PanelApplication application(argc, argv);
    const Kestoboard::LastWords lastWords;
    const Bench::StartReport report(arguments.getNumber(0));
    return Kestoboard::PanelSession(options).run();
}
