// Has the window offer many command files: at first, again, and with one more.
//
// Usage: command_files COUNT
#include "Arguments.h"
#include "EmptyFile.h"
#include "Figures.h"
#include "Panel.h"
#include "Stopwatch.h"

#include <foundation/Debug.h>

#include <QMenu>
#include <QMetaObject>
#include <QToolButton>

namespace
{

/// A button of the window has a menu of so many files.
bool offersFiles(const Bench::Panel& panel, long count)
{
    for (const QToolButton* const button : panel.getWindow()->findChildren<QToolButton*>()) {
        if (button->menu() != nullptr && button->menu()->actions().size() == count) {
            return true;
        }
    }
    return false;
}

/// What the window does every five seconds, in milliseconds. Then it offers so many files.
double refresh(const Bench::Panel& panel, long count)
{
    const Bench::Stopwatch watch;
    const bool isAsked =
        QMetaObject::invokeMethod(panel.getWindow(), "refreshFileButton", Qt::DirectConnection);
    QCoreApplication::processEvents();
    const double milliseconds = watch.getMilliseconds();
    Bench::require(isAsked, "the window can be asked to list the command files");
    Bench::require(offersFiles(panel, count), "the window offers all of the command files");
    return milliseconds;
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
        Bench::makeFile(QStringLiteral("command_%1.cmd").arg(number));
    }

    Bench::Figures figures;
    figures.add("first_ms", refresh(panel, count));
    figures.add("again_ms", refresh(panel, count));
    Bench::makeFile(QStringLiteral("command_1a.cmd"));
    figures.add("changed_ms", refresh(panel, count + 1)).print();
}
