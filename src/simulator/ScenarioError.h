#ifndef SIMULATOR_SCENARIO_ERROR_H
#define SIMULATOR_SCENARIO_ERROR_H

#include <stdexcept>
#include <string>

namespace Simulator
{

/// Thrown for a scenario file that cannot be used; what() names the file, the line and the reason.
class ScenarioError : public std::runtime_error
{
public:
    /// `line` counts from 1; 0 when the reason is not tied to a line.
    ScenarioError(const std::string& file, unsigned long line, const std::string& reason)
        : std::runtime_error("Scenario " + file +
                             (line == 0 ? std::string() : ", line " + std::to_string(line)) + ": " +
                             reason)
    {
    }
};

} // namespace Simulator

#endif
