// Runs a command a number of times through the engine, as whoever uses the panel's engine does.
//
// Usage: engine_exchange COUNT COMMAND [COMMAND THAT IS SENT FIRST]...
#include "Arguments.h"
#include "Figures.h"
#include "Panel.h"
#include "StallMeter.h"
#include "Stopwatch.h"

int main(int argc, char** argv)
{
    const Bench::Panel panel(argc, argv);
    const Bench::Arguments arguments(argc, argv, 2);
    const long count = arguments.getNumber(0);
    const std::string command = arguments.getText(1);

    panel.exchange("board get mode");
    for (int index = 2; index < arguments.getCount(); ++index) {
        panel.exchange(arguments.getText(index));
    }
    std::size_t size = 0;
    Bench::StallMeter stall;
    const Bench::Stopwatch watch;
    for (long number = 0; number < count; ++number) {
        size = panel.exchange(command);
    }
    Bench::Figures()
        .add("us", watch.getMicroseconds() / static_cast<double>(count))
        .add("stall_ms", stall.getLongestMilliseconds())
        .add("bytes", static_cast<double>(size))
        .add("peak_kb", Bench::getPeakKilobytes())
        .print();
}
