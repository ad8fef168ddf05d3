#include "Transfer.h"

#include "Board.h"
#include "FlashImage.h"
#include "InputFile.h"
#include "Patience.h"
#include "Refusal.h"
#include "Replies.h"
#include "Scenario.h"

#include <fstream>

namespace Simulator
{

namespace
{

constexpr double bytesPerMb = 1e6;

std::uint64_t readFile(const std::string& path)
{
    if (path.empty()) {
        throw Refusal("A file must be named");
    }
    const std::uint64_t size = readThrough(path, [](std::string_view) {});
    if (size == 0) {
        throw Refusal("The file is empty");
    }
    return size;
}

std::string getCountersLine(const std::array<long, 3>& counters)
{
    return "Counters: " + std::to_string(counters[0]) + " exception(s), " +
           std::to_string(counters[1]) + " read32 timeout(s), " + std::to_string(counters[2]) +
           " 32bit word(s) read in error\n";
}

} // namespace

Transfer::Transfer(const Board& target, const Scenario& bench, const Patience& waiting)
    : board(target)
    , scenario(bench)
    , patience(waiting)
{
}

std::string Transfer::load(const std::string& path) const
{
    const std::uint64_t size = readFile(path);
    spend(board.getSetup().loadSecondsPerMb, size);
    return "Sent " + std::to_string(size) + " bytes\n" + reportErrors() +
           getCountersLine(board.getSetup().counters);
}

std::string Transfer::programFlash(const std::string& path) const
{
    const std::uint64_t size = readFile(path);
    spend(board.getSetup().flashSecondsPerMb, size);
    const FlashImage image(scenario.state, board.getSetup().name);
    image.program(path);
    if (!image.isSame(path)) {
        throw Refusal("The flash does not hold what was written");
    }
    const std::string bytes = std::to_string(size) + " bytes\n";
    return "Programmed " + bytes + "Verified " + bytes;
}

void Transfer::spend(double secondsPerMb, std::uint64_t size) const
{
    const double megabytes = static_cast<double>(size) / bytesPerMb;
    patience.wait(std::chrono::duration<double>(megabytes * secondsPerMb * scenario.timeScale));
}

// The error handler "Text" writes what went wrong to its file; a load without errors leaves none.
std::string Transfer::reportErrors() const
{
    const ErrorHandler& handler = board.getErrorHandler();
    const std::array<long, 3>& counters = board.getSetup().counters;
    if (handler.name != "Text" || handler.outFilePath.empty() ||
        counters == std::array<long, 3>{}) {
        return {};
    }
    std::ofstream stream(handler.outFilePath, std::ios::binary | std::ios::trunc);
    stream << getCountersLine(counters);
    stream.close();
    return (stream ? "Error report written to " : "Warning, no error report could be written to ") +
           getShown(handler.outFilePath) + "\n";
}

} // namespace Simulator
