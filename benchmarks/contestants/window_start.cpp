// The least that a program with a window can be, measured as panel_start is.
//
// Usage: window_start MOMENT, the moment of its start as start_clock.py says it
#include "Arguments.h"
#include "Figures.h"
#include "FirstPaint.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include <cstdlib>

namespace
{

const int settlingMilliseconds = 500;

} // namespace

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 1);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const Bench::FirstPaint firstPaint([&arguments] {
        const double time = Bench::FirstPaint::getMillisecondsSince(arguments.getNumber(0));
        QTimer::singleShot(settlingMilliseconds, [time] {
            Bench::Figures()
                .add("ms", time)
                .add("resident_kb", Bench::FirstPaint::getResidentKilobytes())
                .print();
            std::fflush(stdout);
            std::_Exit(EXIT_SUCCESS);
        });
    });
    QMainWindow window;
    window.setMinimumSize(800, 600);
    window.setCentralWidget(new QLabel(QStringLiteral("A window"), &window));
    window.show();
    return QApplication::exec();
}
