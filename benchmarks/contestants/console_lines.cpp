// Says many lines on the console in one turn of the event loop, with the window shown.
//
// Usage: console_lines COUNT
#include "Arguments.h"
#include "Figures.h"
#include "Panel.h"
#include "StallMeter.h"
#include "Stopwatch.h"

#include <QPlainTextEdit>
#include <QTextBlock>

int main(int argc, char** argv)
{
    const Bench::Panel panel(argc, argv);
    const Bench::Arguments arguments(argc, argv, 1);
    const long count = arguments.getNumber(0);
    panel.getWindow()->show();
    QCoreApplication::processEvents();
    const auto* const view = panel.getWindow()->findChild<QPlainTextEdit*>();
    const QString last = QStringLiteral("the last line of all");

    const Bench::Stopwatch watch;
    const Bench::StallMeter stall;
    for (long number = 1; number < count; ++number) {
        Orvex::console->print("a line of the length that lines of the board tool have", "");
    }
    Orvex::console->print(last.toStdString(), "");
    const double said = watch.getMilliseconds();
    Bench::StallMeter shownStall;
    while (view->document()->lastBlock().text() != last) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const double shown = watch.getMilliseconds();
    shownStall.settle();
    Bench::Figures()
        .add("ms", shown)
        .add("said_ms", said)
        .add("stall_ms", stall.getLongestMilliseconds())
        .add("shown_stall_ms", shownStall.getLongestMilliseconds())
        .add("peak_kb", Bench::getPeakKilobytes())
        .print();
}
