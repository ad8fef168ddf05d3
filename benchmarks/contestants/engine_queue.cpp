// Queues a number of commands at once, waits for all, and only then destroys them.
//
// Usage: engine_queue COUNT
#include "Arguments.h"
#include "Figures.h"
#include "Panel.h"
#include "Require.h"
#include "Stopwatch.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>

#include <vector>

namespace
{

const char command[] = "board get mode";
const int walks = 20;
const int singles = 1000;

std::vector<Board::CommandHandler*> makeHandlers(long count, Board::KSBaseHandler* engine)
{
    std::vector<Board::CommandHandler*> handlers;
    handlers.reserve(static_cast<std::size_t>(count));
    for (long number = 0; number < count; ++number) {
        handlers.push_back(Board::CommandHandler::create(
            Board::CommandHandler::CommandType::Control, command, engine));
    }
    return handlers;
}

/// One walk of the queue that finds nothing pending.
double measureWalk(Board::KSBaseHandler* engine)
{
    bool isEmpty = true;
    const Bench::Stopwatch watch;
    for (int number = 0; number < walks; ++number) {
        isEmpty = engine->getCommandHandlers().getPendings().isEmpty() && isEmpty;
    }
    const double microseconds = watch.getMicroseconds();
    Bench::require(isEmpty, "no command is pending any more");
    return microseconds / walks;
}

/// One command while no other is alive.
double measureSingle(const Bench::Panel& panel)
{
    const Bench::Stopwatch watch;
    for (int number = 0; number < singles; ++number) {
        panel.exchange(command);
    }
    return watch.getMicroseconds() / singles;
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Panel panel(argc, argv);
    const Bench::Arguments arguments(argc, argv, 1);
    const long count = arguments.getNumber(0);
    Board::KSBaseHandler* const engine = panel.getEngine();
    const double single = measureSingle(panel);

    const Bench::Stopwatch creating;
    const std::vector<Board::CommandHandler*> handlers = makeHandlers(count, engine);
    const double created = creating.getMicroseconds();

    const Bench::Stopwatch running;
    Board::waitCommandHandlerReady(handlers.back());
    const double ran = running.getMicroseconds();
    const double walk = measureWalk(engine);

    const Bench::Stopwatch destroying;
    for (Board::CommandHandler* const handler : handlers) {
        handler->destroy();
    }
    const auto commands = static_cast<double>(count);
    Bench::Figures()
        .add("single_us", single)
        .add("create_us", created / commands)
        .add("run_us", ran / commands)
        .add("walk_us", walk)
        .add("destroy_us", destroying.getMicroseconds() / commands)
        .print();
}
