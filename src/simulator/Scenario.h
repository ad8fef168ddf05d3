#ifndef SIMULATOR_SCENARIO_H
#define SIMULATOR_SCENARIO_H

#include "BoardSetup.h"
#include "FaultSetup.h"

#include <optional>
#include <string>
#include <vector>

namespace Simulator
{

/// What a simulated bench is made of: the contents of a scenario file.
struct Scenario {
    std::string journal;          ///< file that takes every line received; empty for none
    std::string state;            ///< folder of the flash images
    double timeScale = 1.0;       ///< factor on all believable times; 0 answers at once
    std::string startText;        ///< said on standard error at the start
    std::optional<int> startExit; ///< status to end with right after the start
    std::vector<BoardSetup> boards;
    std::vector<FaultSetup> faults;

    /// The bench that is simulated when no scenario is named: one healthy board.
    static Scenario getBuiltIn();

    /// The folder of the flash images where a scenario names none: below $XDG_STATE_HOME, else
    /// below ~/.local/state.
    static std::string getDefaultState();
};

} // namespace Simulator

#endif
