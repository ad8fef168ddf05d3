#include "Require.h"
#include "Targets.h"

#include <Board/MonitorReply.h>

namespace Fuzz
{

namespace
{

std::vector<std::string> cut(const std::string& text, const std::string& separator)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t at = text.find(separator); at != std::string::npos;
         at = text.find(separator, begin)) {
        pieces.push_back(text.substr(begin, at - begin));
        begin = at + separator.size();
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

QString fromBytes(const std::string& bytes)
{
    return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}

void compare(const Board::MonitoredChannel& channel, const std::vector<std::string>& values)
{
    require(channel.voltage.has_value() == (values.size() == 1 || values.size() == 2),
            "one value or two have a voltage");
    require(channel.current.has_value() == (values.size() == 2), "two values have a current");
    if (values.size() == 1) {
        require(*channel.voltage == QString::fromUtf8(values[0].c_str()), "one value is UTF-8");
    } else if (values.size() == 2) {
        require(*channel.voltage == fromBytes(values[0]), "a voltage is a character a byte");
        require(*channel.current == fromBytes(values[1]), "a current is a character a byte");
    }
}

} // namespace

void monitor(const std::string& bytes)
{
    const std::list<Board::MonitoredChannel> channels = Board::parseMonitorReply(bytes);
    auto channel = channels.begin();
    for (const std::string& line : cut(bytes, "\n")) {
        const std::vector<std::string> fields = cut(line, ": ");
        if (fields.size() != 2) {
            continue;
        }
        require(channel != channels.end(), "every line with one separator is a channel");
        require(channel->name == fields[0], "the name stands before the separator");
        compare(*channel, cut(fields[1], " "));
        ++channel;
    }
    require(channel == channels.end(), "no other line is a channel");
}

} // namespace Fuzz
