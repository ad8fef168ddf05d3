#ifndef SIMULATOR_DISTURBANCE_H
#define SIMULATOR_DISTURBANCE_H

#include "FaultSetup.h"
#include "Output.h"
#include "Patience.h"
#include "ResponseWriter.h"

#include <optional>
#include <string>
#include <vector>

namespace Simulator
{

/// What the faults that meet one command do to it. With no faults the answer goes out as it is.
class Disturbance
{
public:
    Disturbance(std::vector<FaultSetup> due, const Output& errorOutput, const Patience& waiting);

    /// What comes before the command is carried out: delays, texts, closed channels, the end of
    /// the program. Does not return when a fault ends it.
    void begin() const;

    /// The answer to give in place of carrying the command out, if a fault demands one; an empty
    /// one for a command that is never answered.
    std::optional<std::string> getSubstitute() const;

    /// Brings `answer` to the reader, spoilt as the faults say.
    void deliver(const std::string& answer) const;

    /// Whether standard input was closed, so that no more commands can come.
    bool closesInput() const;

private:
    void perform(const FaultSetup& fault) const;
    void sendAhead(const std::string& text) const;

    std::vector<FaultSetup> faults;
    Output output;
    Patience patience;
    ResponseWriter writer;
};

} // namespace Simulator

#endif
