// Has the window offer many command files: at first, again, and with one more.
//
// Usage: command_files COUNT
#include "Arguments.h"
#include "Figures.h"
#include "Panel.h"
#include "Stopwatch.h"

#include <foundation/Debug.h>

#include <QFile>
#include <QMetaObject>

namespace
{

void makeFile(const QString& name)
{
    QFile file(name);
    file.open(QIODevice::WriteOnly);
}

/// What the window does every five seconds, in milliseconds.
double refresh(const Bench::Panel& panel)
{
    const Bench::Stopwatch watch;
    QMetaObject::invokeMethod(panel.getWindow(), "refreshFileButton", Qt::DirectConnection);
    QCoreApplication::processEvents();
    return watch.getMilliseconds();
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 1);
    const long count = arguments.getNumber(0);
    Orvex::setDebug(true);
    const Bench::Panel panel(argc, argv);
    panel.getWindow()->show();
    QCoreApplication::processEvents();
    for (long number = 0; number < count; ++number) {
        makeFile(QStringLiteral("command_%1.cmd").arg(number));
    }

    Bench::Figures figures;
    figures.add("first_ms", refresh(panel)).add("again_ms", refresh(panel));
    makeFile(QStringLiteral("command_1a.cmd"));
    figures.add("changed_ms", refresh(panel)).print();
}
