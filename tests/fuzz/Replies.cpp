#include "Require.h"
#include "Targets.h"
#include "app/ReplyVerdict.h"

#include <Board/Replies.h>

#include <algorithm>
#include <optional>

namespace Fuzz
{

namespace
{

bool has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

void judgeForceBit(const std::string& reply)
{
    using Board::ForceBitState;
    const ForceBitState state = Board::getForceBitState(reply);
    const ForceBitState expected = has(reply, "Error")                 ? ForceBitState::Refused
                                   : has(reply, "Forcebit is set")     ? ForceBitState::Set
                                   : has(reply, "Forcebit is not set") ? ForceBitState::NotSet
                                                                       : ForceBitState::Unknown;
    require(state == expected, "an error goes before either state");
    const std::string error = Board::getForceBitError(reply);
    require(!has(error, "\n") && error.size() <= reply.size(), "an error is one line of the reply");
}

void judgeSimplified(const std::string& reply)
{
    const std::string simplified = Board::getSimplified(reply);
    require(Board::getSimplified(simplified) == simplified, "what is simple stays");
    require(!has(simplified, "  ") && !has(simplified, "\n") && !has(simplified, "\t"),
            "a run of white space is one blank");
    require(Board::isAccepted(reply) == has(reply, "OK"), "OK accepts");
}

bool begins(const std::string& text, const std::string& beginning)
{
    return text.rfind(beginning, 0) == 0;
}

/// What the console is told of such a command, success or failure; nothing of others.
std::optional<bool> getConsoleVerdict(const std::string& command, const std::string& reply)
{
    if (begins(command, "chip bitstream load ")) {
        return Board::isBitstreamLoaded(reply);
    }
    if (begins(command, "board spi flash program ")) {
        return Board::isFlashProgrammed(reply);
    }
    for (const char* const setting :
         {"board set mode '", "board set reset o", "board set jtag_clock o",
          "board set force_bit o", "board select 0", "chip bitstream err_handler select d"}) {
        if (begins(command, setting)) {
            return Board::isAccepted(reply);
        }
    }
    return {};
}

void judgeVerdict(const std::string& command, const std::string& reply)
{
    using Kestoboard::ReplyVerdict;
    // One that ends with its blank names no file, and is none that the engine sends.
    const std::string sent = Board::getSimplified(command);
    const ReplyVerdict verdict = ReplyVerdict::fromReply(sent, reply);
    if (const std::optional<bool> told = getConsoleVerdict(sent, reply)) {
        require(verdict.outcome != ReplyVerdict::Outcome::Unknown &&
                    (verdict.outcome == ReplyVerdict::Outcome::Succeeded) == *told,
                "the status and the console agree");
    } else if (!begins(sent, "board se") && !begins(sent, "chip bitstream err_handler select")) {
        require((verdict.outcome == ReplyVerdict::Outcome::Unknown) ==
                    (!has(reply, "COMMAND SUCCEEDED") && !has(reply, "COMMAND FAILED")),
                "a mark is a verdict");
    }
    require(!verdict.reason.contains(QLatin1Char('\n')), "a reason is one line");
    require(verdict.hint.isEmpty() || !verdict.reason.isEmpty(), "a hint belongs to a reason");
}

} // namespace

void replies(const std::string& bytes)
{
    const std::string command = Board::getFirstLine(bytes);
    require(!has(command, "\n") && bytes.compare(0, command.size(), command) == 0,
            "the first line is one");
    const std::string reply = bytes.substr(std::min(command.size() + 1, bytes.size()));
    judgeForceBit(reply);
    judgeSimplified(reply);
    judgeVerdict(command, reply);
    require(Board::isFlashProgrammed(reply) == has(reply, "COMMAND SUCCEEDED"),
            "the mark decides on a flash");
}

} // namespace Fuzz
