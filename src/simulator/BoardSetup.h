#ifndef SIMULATOR_BOARD_SETUP_H
#define SIMULATOR_BOARD_SETUP_H

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace Simulator
{

/// One [[board.channel]]: either a supply with a voltage, a current or both, or values as texts.
struct ChannelSetup {
    std::string name;
    std::optional<double> voltage;   ///< nominal, in volts
    std::optional<double> current;   ///< nominal, in amperes
    std::vector<std::string> values; ///< shown as they stand, with one blank between them
    bool drifting = false;           ///< the number at the head of each value moves a little
};

/// How a board answers when it is asked for its force bit.
enum class ForceBit { Clear, Set, Unreadable };

/// One [[board]] of a scenario.
struct BoardSetup {
    std::string name;                   ///< empty for a raw line that names no board
    std::string identifier;             ///< the second word of its line in the listing
    std::optional<std::string> rawLine; ///< its line in the listing, exactly
    std::string mode = "Jtag only";
    bool modeLocked = false; ///< every change of the mode is refused
    ForceBit forceBit = ForceBit::Clear;
    bool captureRefused = false;
    bool selected = false;
    double loadSecondsPerMb = 1.0;  ///< for a million bytes, before the time scale
    double flashSecondsPerMb = 4.0; ///< for a million bytes, before the time scale
    std::array<long, 3> counters{}; ///< exceptions, read timeouts, wrong words of a load
    std::vector<ChannelSetup> channels;
};

} // namespace Simulator

#endif
