#ifndef SIMULATOR_SCENARIO_READER_H
#define SIMULATOR_SCENARIO_READER_H

#include "Scenario.h"

#include <string>

namespace Simulator
{

/// Reads the text of a scenario. Relative paths in it start at the folder of `path`, which need not
/// exist. Throws ScenarioError when it is no TOML, or says something that has no meaning.
Scenario parseScenario(const std::string& text, const std::string& path);

/// Reads the scenario file `path` anew. Relative paths in it start at its own folder.
/// Throws ScenarioError as parseScenario, and when it cannot be read.
Scenario readScenario(const std::string& path);

} // namespace Simulator

#endif
