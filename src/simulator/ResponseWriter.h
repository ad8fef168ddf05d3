#ifndef SIMULATOR_RESPONSE_WRITER_H
#define SIMULATOR_RESPONSE_WRITER_H

#include "Output.h"
#include "Patience.h"

#include <chrono>
#include <string>
#include <vector>

namespace Simulator
{

/// Brings answers to their reader.
class ResponseWriter
{
public:
    ResponseWriter(const Output& answers, const Patience& waiting);

    /// The whole answer in one write. One that is too large for a pipe to take as a unit goes in
    /// two, so that its last line with the mark still arrives as a whole.
    void write(const std::string& answer) const;

    /// Each piece arrives by itself: the next one is written once the reader has taken the last,
    /// and `pause` after that.
    void writePieces(const std::vector<std::string>& pieces, std::chrono::milliseconds pause) const;

private:
    Output output;
    Patience patience;
};

} // namespace Simulator

#endif
