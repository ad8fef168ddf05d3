// Lists boards that come, and that are known already, through the engine.
//
// Usage: engine_boards BOARDS PASSES [MICROSECONDS THAT THE TOOL TAKES FOR A COMMAND]
#include "Arguments.h"
#include "Figures.h"
#include "Panel.h"
#include "Require.h"
#include "Stopwatch.h"

#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/ForEachControler.h>
#include <foundation/FromCollection.h>
#include <foundation/ListCollection.h>

#include <list>

namespace
{

/// Asks of every board whether it is among those listed, by the idiom of the engine.
unsigned long countAbsent(const Orvex::Collection<Board::Tamsa*>& known,
                          const std::list<Board::Tamsa*>& listed)
{
    unsigned long absent = 0;
    Board::Tamsa* tamsa = nullptr;
    const Orvex::ListCollection<Board::Tamsa*> present(listed);
    for (Orvex::ForEachControler<Board::Tamsa*> loop(tamsa, known); loop.next();) {
        if (Orvex::FromCollection<Board::Tamsa*>(present, tamsa).isEmpty()) {
            ++absent;
        }
    }
    return absent;
}

double measureMembership(const Orvex::Collection<Board::Tamsa*>& known, long passes)
{
    std::list<Board::Tamsa*> listed;
    Board::Tamsa* tamsa = nullptr;
    for (Orvex::ForEachControler<Board::Tamsa*> loop(tamsa, known); loop.next();) {
        listed.push_back(tamsa);
    }
    unsigned long absent = 0;
    const Bench::Stopwatch watch;
    for (long pass = 0; pass < passes; ++pass) {
        absent += countAbsent(known, listed);
    }
    const double microseconds = watch.getMicroseconds();
    Bench::require(absent == 0, "each board is found among those listed");
    return microseconds / static_cast<double>(passes);
}

} // namespace

int main(int argc, char** argv)
{
    const Bench::Panel panel(argc, argv);
    const Bench::Arguments arguments(argc, argv, 2);
    const long passes = arguments.getNumber(1);
    Board::KSBaseHandler* const engine = panel.getEngine();

    panel.exchange("boards " + arguments.getText(0));
    if (arguments.getCount() > 2) {
        panel.exchange("delay " + arguments.getText(2));
    }
    const Bench::Stopwatch connecting;
    engine->refreshTamsaMap();
    const double connected = connecting.getMicroseconds();

    const Bench::Stopwatch listing;
    for (long pass = 0; pass < passes; ++pass) {
        engine->refreshTamsaMap();
    }
    const double listed = listing.getMicroseconds();
    Bench::Figures()
        .add("connect_us", connected)
        .add("pass_us", listed / static_cast<double>(passes))
        .add("membership_us", measureMembership(engine->getTamsas(), passes))
        .add("boards", static_cast<double>(engine->getTamsas().getCount()))
        .print();
}
