#include <Board/Replies.h>

namespace Board
{

namespace
{

const std::string asciiSpaces = " \t\n\v\f\r";
const std::string errorPrefix = "Error: ";

bool contains(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

std::string getSimplified(const std::string& text)
{
    std::string simplified;
    std::string::size_type begin = text.find_first_not_of(asciiSpaces);
    while (begin != std::string::npos) {
        const std::string::size_type end = text.find_first_of(asciiSpaces, begin);
        if (!simplified.empty()) {
            simplified += ' ';
        }
        simplified.append(text, begin, end - begin);
        begin = text.find_first_not_of(asciiSpaces, end);
    }
    return simplified;
}

std::string getFirstLine(const std::string& reply)
{
    return reply.substr(0, reply.find('\n'));
}

bool isAccepted(const std::string& reply)
{
    return contains(getSimplified(reply), "OK");
}

bool isFlashProgrammed(const std::string& reply)
{
    return contains(reply, "COMMAND SUCCEEDED");
}

bool isBitstreamLoaded(const std::string& reply)
{
    return contains(reply, "Counters: 0 exception(s), 0 read32 timeout(s), "
                           "0 32bit word(s) read in error");
}

ForceBitState getForceBitState(const std::string& reply)
{
    if (contains(reply, "Error")) {
        return ForceBitState::Refused;
    }
    if (contains(reply, "Forcebit is set")) {
        return ForceBitState::Set;
    }
    if (contains(reply, "Forcebit is not set")) {
        return ForceBitState::NotSet;
    }
    return ForceBitState::Unknown;
}

std::string getForceBitError(const std::string& reply)
{
    std::string words = getFirstLine(reply);
    for (std::string::size_type at = words.find(errorPrefix); at != std::string::npos;
         at = words.find(errorPrefix, at)) {
        words.erase(at, errorPrefix.size());
    }
    return getSimplified(words);
}

} // namespace Board
