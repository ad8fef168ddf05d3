#ifndef APP_RECENTLOADS_H
#define APP_RECENTLOADS_H

namespace Kestoboard
{

/// Takes the paths that the board tool cannot take out of the stored list of recent files, with a
/// sentence on the console for each: they may have come from a file of settings that somebody else
/// has written. Before the window is made, which shows the list.
void refuseRecentLoads();

} // namespace Kestoboard

#endif
