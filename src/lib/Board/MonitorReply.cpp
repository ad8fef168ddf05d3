#include <Board/MonitorReply.h>

#include <foundation/Encoding.h>
#include <foundation/ForEachControler.h>
#include <foundation/Text.h>

#include <utility>

namespace Board
{

namespace
{

void readValues(const std::string& field, MonitoredChannel* channel)
{
    const Orvex::Collection<std::string> values = Orvex::getSplitted(field, " ");
    std::string first;
    std::string second;
    if (values.match(first)) {
        channel->voltage = QString::fromUtf8(first.c_str());
    } else if (values.match(first, second)) {
        channel->voltage = Orvex::fromAscii(first);
        channel->current = Orvex::fromAscii(second);
    }
}

} // namespace

std::list<MonitoredChannel> parseMonitorReply(const std::string& reply)
{
    std::list<MonitoredChannel> channels;
    std::string line;
    for (Orvex::ForEachControler<std::string> loop(line, Orvex::getSplitted(reply, "\n"));
         loop.next();) {
        MonitoredChannel channel;
        std::string field;
        if (!line.empty() && Orvex::getSplitted(line, ": ").match(channel.name, field)) {
            readValues(field, &channel);
            channels.push_back(std::move(channel));
        }
    }
    return channels;
}

} // namespace Board
