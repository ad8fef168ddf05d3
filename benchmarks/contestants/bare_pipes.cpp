// Runs a command a number of times over two bare pipes.
//
// Usage: bare_pipes COUNT COMMAND [COMMAND THAT IS SENT FIRST]...
#include "Arguments.h"
#include "Figures.h"
#include "Stopwatch.h"
#include "ToolPipes.h"

int main(int argc, char** argv)
{
    const Bench::Arguments arguments(argc, argv, 2);
    const long count = arguments.getNumber(0);
    const std::string command = arguments.getText(1);

    Bench::ToolPipes tool;
    // As engine_exchange does it: what is measured has not been sent before.
    tool.exchange("board get mode");
    for (int index = 2; index < arguments.getCount(); ++index) {
        tool.exchange(arguments.getText(index));
    }
    std::size_t size = 0;
    const Bench::Stopwatch watch;
    for (long number = 0; number < count; ++number) {
        size = tool.exchange(command).size();
    }
    Bench::Figures()
        .add("us", watch.getMicroseconds() / static_cast<double>(count))
        .add("bytes", static_cast<double>(size))
        .add("peak_kb", Bench::getPeakKilobytes())
        .print();
}
