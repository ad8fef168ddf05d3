#ifndef SIMULATOR_TRANSFER_H
#define SIMULATOR_TRANSFER_H

#include <string>

namespace Simulator
{

class Board;
class Patience;
struct Scenario;

/// The two commands that move a file to a board. Both take the time that the board and the time
/// scale of the scenario give for the size of the file, return the lines to answer, and throw
/// Refusal when the file is missing, empty, or cannot be read.
class Transfer
{
public:
    Transfer(const Board& target, const Scenario& bench, const Patience& waiting);

    /// Loads a bitstream into the chip. The last line holds the counters of the load.
    std::string load(const std::string& path) const;

    /// Writes the flash memory and compares it with the file afterwards.
    std::string programFlash(const std::string& path) const;

private:
    void spend(double secondsPerMb, std::uint64_t size) const;
    std::string reportErrors() const;

    const Board& board;
    const Scenario& scenario;
    const Patience& patience;
};

} // namespace Simulator

#endif
