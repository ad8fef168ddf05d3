#include "Session.h"

#include "CommandParser.h"
#include "Disturbance.h"
#include "ScenarioReader.h"

#include <istream>
#include <unistd.h>
#include <utility>

namespace Simulator
{

namespace
{

bool isListing(const std::string& line)
{
    const auto command = parseCommand(line);
    return command && command->kind == CommandKind::BoardList;
}

// Lines that were written with the line ends of another system.
std::string withoutCarriageReturn(const std::string& line)
{
    return !line.empty() && line.back() == '\r' ? line.substr(0, line.size() - 1) : line;
}

} // namespace

Session::Session(std::string scenario)
    : scenarioPath(std::move(scenario))
    , errorOutput(STDERR_FILENO)
    , patience(errorOutput)
    , interpreter(bench, patience)
{
}

int Session::run(std::istream& input)
{
    reload();
    errorOutput.write(bench.getScenario().startText);
    if (bench.getScenario().startExit) {
        return *bench.getScenario().startExit;
    }
    std::string line;
    while (std::getline(input, line)) {
        if (!serve(line)) {
            patience.waitForEnd();
            break;
        }
    }
    return 0;
}

void Session::reload()
{
    try {
        const Scenario scenario =
            scenarioPath.empty() ? Scenario::getBuiltIn() : readScenario(scenarioPath);
        journal.open(scenario.journal);
        bench.apply(scenario);
        injector.setFaults(scenario.faults);
    } catch (const std::exception& failure) {
        bench.setProblem(failure.what());
    }
}

bool Session::serve(const std::string& line)
{
    const std::string command = withoutCarriageReturn(line);
    if (isListing(command)) {
        reload();
    }
    journal.append(line);

    const Disturbance disturbance(injector.takeDue(line), errorOutput, patience);
    disturbance.begin();
    const auto substitute = disturbance.getSubstitute();
    disturbance.deliver(substitute ? *substitute : interpreter.answer(command));
    return !disturbance.closesInput();
}

} // namespace Simulator
