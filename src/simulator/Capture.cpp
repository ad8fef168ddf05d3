#include "Capture.h"

#include "Board.h"
#include "Refusal.h"
#include "Replies.h"
#include "VcdWriter.h"
#include "Words.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <system_error>

namespace Simulator
{

namespace
{

constexpr double lowestFrequency = 1;
constexpr double highestFrequency = 1e9;
constexpr double picosecondsPerSecond = 1e12;
constexpr unsigned periods = 256;

double parseFrequency(const std::string& text)
{
    double frequency = 0;
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, frequency);
    const bool valid = parsed.ec == std::errc() && parsed.ptr == end &&
                       frequency >= lowestFrequency && frequency <= highestFrequency;
    if (!valid) {
        throw Refusal("The frequency must be a number of hertz from 1 to 1E9, such as 100E6");
    }
    return frequency;
}

std::uint64_t getGray(std::uint64_t count)
{
    return count ^ (count >> 1U);
}

// A clock with a counter that follows it. The counter stands still while the board is in reset.
void record(const Board& board, double frequency, std::ostream& stream)
{
    std::ostringstream comment;
    comment << std::fixed << std::setprecision(0) << "Sampling clock " << frequency << " Hz";
    VcdWriter writer(stream);
    writer.writeHeader(comment.str());
    const std::size_t clock = writer.addSignal("clk", 1);
    writer.addSignal("reset", 1);
    writer.addSignal("jtag_clock_on", 1);
    const std::size_t counter = writer.addSignal("counter", 8);
    const std::size_t gray = writer.addSignal("gray", 8);
    writer.begin({0, board.getResetBit() ? 1U : 0U, board.getClockBit() ? 1U : 0U, 0, 0});

    const double halfPeriod = picosecondsPerSecond / frequency / 2;
    const auto getTime = [halfPeriod](unsigned edge) {
        return static_cast<std::uint64_t>(std::llround(halfPeriod * edge));
    };
    for (unsigned period = 0; period < periods; ++period) {
        const std::uint64_t rising = getTime(2 * period + 1);
        writer.change(rising, clock, 1);
        if (!board.getResetBit()) {
            const std::uint64_t count = (period + 1) % periods;
            writer.change(rising, counter, count);
            writer.change(rising, gray, getGray(count));
        }
        writer.change(getTime(2 * period + 2), clock, 0);
    }
    writer.end(getTime(2 * periods + 1));
}

} // namespace

CaptureRequest CaptureRequest::parse(const std::string& argument)
{
    const std::vector<std::string> words = getWords(argument);
    if (words.size() < 2) {
        throw Refusal("A capture needs a file and a frequency");
    }
    if (words.size() > 3) {
        throw Refusal("Too many arguments, a file name with blanks cannot be given here");
    }
    CaptureRequest request;
    request.file = words[0];
    request.frequency = parseFrequency(words[1]);
    request.immediate = words.size() == 3;
    if (request.immediate && words[2] != "immediate=1") {
        throw Refusal("The only option of a capture is immediate=1");
    }
    return request;
}

std::string writeCapture(const Board& board, const CaptureRequest& request)
{
    errno = 0;
    std::ofstream stream(request.file, std::ios::binary | std::ios::trunc);
    if (stream) {
        record(board, request.frequency, stream);
        stream.close();
    }
    if (!stream) {
        throw Refusal(std::generic_category().message(errno == 0 ? EIO : errno));
    }
    return "Captured " + std::to_string(periods) + " periods into " + getShown(request.file) + "\n";
}

} // namespace Simulator
