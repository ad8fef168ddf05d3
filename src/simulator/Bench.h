#ifndef SIMULATOR_BENCH_H
#define SIMULATOR_BENCH_H

#include "Board.h"
#include "Scenario.h"

#include <map>
#include <string>

namespace Simulator
{

/// The boards of the moment and which of them is selected. Boards are addressed by number: the
/// position of their name in byte order, counted from 0.
class Bench
{
public:
    /// Boards that stay keep their state, new ones begin as the scenario says, others go. The
    /// selection stays as long as its board does; it moves when the scenario newly marks a board.
    void apply(const Scenario& reading);

    /// The scenario cannot be read at the moment, for the given reason; the boards stay. The next
    /// apply() ends this.
    void setProblem(const std::string& reason) { problem = reason; }

    /// The last scenario that was applied.
    const Scenario& getScenario() const { return scenario; }

    /// One line a board, in the order of the scenario, after a heading. Throws Refusal while there
    /// is a problem.
    std::string getListing() const;

    /// Throws Refusal when there is no board of that number.
    void select(long number);

    /// Throws Refusal when no board is selected. Valid until the next apply().
    Board& getSelected();

private:
    Scenario scenario;
    std::map<std::string, Board> boards;
    std::string selected; ///< name of a board in `boards`; empty for none
    std::string marked;   ///< name of the board that the scenario marks; empty for none
    std::string problem;
};

} // namespace Simulator

#endif
