#include <Board/BoardListing.h>

#include <Board/Replies.h>
#include <foundation/Text.h>

namespace Board
{

namespace
{

const char boardMarker[] = "0x534B";
const char selectedMarker[] = "*";
const unsigned firstNameToken = 2;
const unsigned lastNameToken = 7;

/// The position where the token of that number begins in a simplified line, or npos.
std::string::size_type findToken(const std::string& line, unsigned number)
{
    std::string::size_type begin = 0;
    for (unsigned token = 0; token < number && begin != std::string::npos; ++token) {
        begin = line.find(' ', begin);
        if (begin != std::string::npos) {
            ++begin;
        }
    }
    return begin;
}

std::string getName(const std::string& line)
{
    const std::string::size_type begin = findToken(line, firstNameToken);
    if (begin == std::string::npos) {
        return {};
    }
    const std::string::size_type afterName = findToken(line, lastNameToken + 1);
    // The blank before the token after the name belongs to neither.
    const std::string::size_type end = afterName == std::string::npos ? line.size() : afterName - 1;
    return line.substr(begin, end - begin);
}

} // namespace

std::list<ListedBoard> parseBoardListing(const std::string& reply)
{
    std::list<ListedBoard> boards;
    std::string::size_type begin = 0;
    while (begin != std::string::npos) {
        const std::string::size_type end = reply.find('\n', begin);
        const std::string line = getSimplified(reply.substr(begin, end - begin));
        if (line.find(boardMarker) != std::string::npos) {
            boards.push_back({getName(line), Orvex::startsWith(line, selectedMarker)});
        }
        begin = end == std::string::npos ? end : end + 1;
    }
    return boards;
}

} // namespace Board
