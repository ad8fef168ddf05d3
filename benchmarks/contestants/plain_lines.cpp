// Puts many lines at once into a plain text field of the toolkit, which keeps as many as the
// console.
//
// Usage: plain_lines COUNT
#include "Arguments.h"
#include "Figures.h"
#include "Stopwatch.h"

#include <application/ConsoleView.h>

#include <QApplication>
#include <QPlainTextEdit>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const Bench::Arguments arguments(argc, argv, 1);
    QPlainTextEdit view;
    view.setReadOnly(true);
    view.setUndoRedoEnabled(false);
    view.setMaximumBlockCount(Zandu::ConsoleView::defaultLineLimit);
    view.resize(800, 300);
    view.show();
    QCoreApplication::processEvents();

    const Bench::Stopwatch watch;
    for (long number = 0; number < arguments.getNumber(0); ++number) {
        view.appendPlainText(
            QStringLiteral("a line of the length that lines of the board tool have"));
    }
    QCoreApplication::processEvents();
    Bench::Figures().add("ms", watch.getMilliseconds()).print();
}
