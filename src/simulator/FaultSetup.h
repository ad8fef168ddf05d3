#ifndef SIMULATOR_FAULT_SETUP_H
#define SIMULATOR_FAULT_SETUP_H

#include <string>
#include <vector>

namespace Simulator
{

/// The ways in which an answer can go wrong.
enum class FaultKind {
    Late,        ///< the answer comes after a delay
    Hold,        ///< the answer comes once a certain file exists
    Never,       ///< no answer
    Refused,     ///< an error in place of the answer
    Split,       ///< the answer comes in pieces
    Nul,         ///< the answer holds NUL bytes
    Garbage,     ///< the answer is noise but for its mark
    Before,      ///< a text comes in front of the answer
    After,       ///< a text follows the answer
    Large,       ///< the answer is filled up to a size
    Stdout,      ///< a text goes to standard output as well
    Exit,        ///< the tool ends without an answer
    Kill,        ///< a signal hits the tool before it answers
    Reply,       ///< a given text is the whole answer
    CloseStdin,  ///< the tool closes its standard input, then answers
    CloseStderr, ///< the tool closes its standard error, so that no answer comes any more
};

/// One [[fault]] of a scenario: which commands it meets, and what it does. Fields that the kind
/// does not use keep their first value.
struct FaultSetup {
    FaultKind kind = FaultKind::Never;
    std::string command;  ///< prefix of the lines that it meets; empty for every line
    std::string note;     ///< free text; a fault with another note is another fault
    long skip = 0;        ///< lines that are passed over before the first one is met
    long times = 1;       ///< lines that are met; 0 for no end
    long delayMs = 0;     ///< before the answer, or before what follows it
    long pauseMs = 0;     ///< between the pieces of the answer
    long every = 0;       ///< length of a piece in bytes; 0 when only `at` cuts
    long bytes = 0;       ///< size of a large answer or of garbage
    long number = 0;      ///< exit status or signal
    std::vector<long> at; ///< byte offsets; negative ones count from the end of the answer
    std::string text;     ///< what is said, as bytes
    std::string file;     ///< absolute path of the file that ends a hold
};

bool operator==(const FaultSetup& left, const FaultSetup& right);

} // namespace Simulator

#endif
