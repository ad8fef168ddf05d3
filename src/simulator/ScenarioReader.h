#ifndef SIMULATOR_SCENARIO_READER_H
#define SIMULATOR_SCENARIO_READER_H

#include "Scenario.h"

#include <string>

namespace Simulator
{

/// Reads the scenario file `path` anew. Relative paths in it start at its own folder.
/// Throws ScenarioError when it cannot be read, is no TOML, or says something that has no meaning.
Scenario readScenario(const std::string& path);

} // namespace Simulator

#endif
