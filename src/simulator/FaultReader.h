#ifndef SIMULATOR_FAULT_READER_H
#define SIMULATOR_FAULT_READER_H

#include "FaultSetup.h"

#include <string>

namespace Simulator
{

class TableReader;

/// Reads one [[fault]]; relative paths in it start at `folder`. Throws ScenarioError.
FaultSetup readFault(TableReader& reader, const std::string& folder);

} // namespace Simulator

#endif
