// The least that a program with a window can be, measured as panel_start is.
//
// Usage: window_start MOMENT, the moment of its start as start_clock.py says it
#include "Arguments.h"
#include "StartReport.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 1);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const Bench::StartReport report(arguments.getNumber(0));
    QMainWindow window;
    window.setMinimumSize(800, 600);
    window.setCentralWidget(new QLabel(QStringLiteral("A window"), &window));
    window.show();
    return QApplication::exec();
}
