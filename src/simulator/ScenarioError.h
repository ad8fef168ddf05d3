#ifndef SIMULATOR_SCENARIO_ERROR_H
#define SIMULATOR_SCENARIO_ERROR_H

#include <algorithm>
#include <stdexcept>
#include <string>

namespace Simulator
{

/// Thrown for a scenario file that cannot be used; what() names the file, the line and the reason.
/// It is one line of an answer, whatever the file holds.
class ScenarioError : public std::runtime_error
{
public:
    /// `line` counts from 1; 0 when the reason is not tied to a line.
    ScenarioError(const std::string& file, unsigned long line, const std::string& reason)
        : std::runtime_error(toOneLine(
              "Scenario " + file + (line == 0 ? std::string() : ", line " + std::to_string(line)) +
              ": " + reason))
    {
    }

private:
    static std::string toOneLine(std::string text)
    {
        const auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
        std::replace_if(text.begin(), text.end(), isControl, ' ');
        return text;
    }
};

} // namespace Simulator

#endif
