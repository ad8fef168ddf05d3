#ifndef SIMULATOR_SESSION_H
#define SIMULATOR_SESSION_H

#include "Bench.h"
#include "FaultInjector.h"
#include "Interpreter.h"
#include "Journal.h"
#include "Output.h"
#include "Patience.h"

#include <iosfwd>
#include <string>

namespace Simulator
{

/// One run of the tool: commands come in line by line, and each is answered before the next is
/// looked at.
class Session
{
public:
    /// `scenario` is the path of the scenario file; empty for the built-in bench.
    explicit Session(std::string scenario);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Serves commands until the end of `input`; answers go to standard error. Returns the exit
    /// status of the program.
    int run(std::istream& input);

private:
    void reload();
    /// Returns whether more commands can come.
    bool serve(const std::string& line);

    std::string scenarioPath;
    Output errorOutput;
    Patience patience;
    Journal journal;
    Bench bench;
    FaultInjector injector;
    Interpreter interpreter;
};

} // namespace Simulator

#endif
