#ifndef SIMULATOR_MONITOR_REPORT_H
#define SIMULATOR_MONITOR_REPORT_H

#include "BoardSetup.h"

#include <string>
#include <vector>

namespace Simulator
{

/// One line for each channel: its name, a colon and a blank, and its values one blank apart. Values
/// that drift move a little with `reading`, the number of readings taken before; the same channel
/// and number give the same line in every run.
std::string getMonitorReport(const std::vector<ChannelSetup>& channels, unsigned long reading);

} // namespace Simulator

#endif
