#ifndef BOARD_MONITORREPLY_H
#define BOARD_MONITORREPLY_H

#include <QString>

#include <list>
#include <optional>
#include <string>

namespace Board
{

/// What one channel line of a monitoring reply says. The texts are the tool's, units and all.
struct MonitoredChannel {
    std::string name; ///< may be empty
    std::optional<QString> voltage;
    std::optional<QString> current;
};

/// The channels of a reply to "board monitor get", in the order of their lines.
///
/// A line is a channel if its separator ": " stands in it exactly once; any other line is passed
/// over. One value is a voltage, two are a voltage and a current, any other number is no value. A
/// lone value is UTF-8 and ends at its first NUL; a pair is one character a byte.
std::list<MonitoredChannel> parseMonitorReply(const std::string& reply);

} // namespace Board

#endif
