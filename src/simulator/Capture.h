#ifndef SIMULATOR_CAPTURE_H
#define SIMULATOR_CAPTURE_H

#include <string>

namespace Simulator
{

class Board;

/// What a capture command asks for.
struct CaptureRequest {
    std::string file;
    double frequency = 0;   ///< of the sampling clock, in hertz
    bool immediate = false; ///< does not wait for the trigger

    /// Reads "FILE FREQUENCY [immediate=1]". Throws Refusal when it is anything else.
    static CaptureRequest parse(const std::string& argument);
};

/// Records what the chip on `board` does for a while, with the state of its bits, into the file of
/// the request, which is replaced. Returns the line to answer; throws Refusal with the system's
/// reason when the file cannot be written.
std::string writeCapture(const Board& board, const CaptureRequest& request);

} // namespace Simulator

#endif
