#include "app/ReplyVerdict.h"

#include <Board/Replies.h>
#include <foundation/Encoding.h>

#include <QCoreApplication>
#include <QStringList>

namespace Kestoboard
{

namespace
{

const char successMark[] = "COMMAND SUCCEEDED";
const char failureMark[] = "COMMAND FAILED";

using Outcome = ReplyVerdict::Outcome;

/// How the engine judges the replies to a kind of command, and tells it on the console.
struct Rule {
    const char* beginning;
    bool (*isSuccess)(const std::string& reply);
};

const Rule rules[] = {
    {"board set mode ", Board::isAccepted},
    {"board set reset ", Board::isAccepted},
    {"board set jtag_clock ", Board::isAccepted},
    {"board set force_bit ", Board::isAccepted},
    {"board select ", Board::isAccepted},
    {"chip bitstream err_handler select ", Board::isAccepted},
    {"board spi flash program ", Board::isFlashProgrammed},
    {"chip bitstream load ", Board::isBitstreamLoaded},
};

/// What the engine does not judge has the later of its marks as a verdict.
Outcome getMarkedOutcome(const std::string& reply)
{
    const std::size_t success = reply.rfind(successMark);
    const std::size_t failure = reply.rfind(failureMark);
    if (success == std::string::npos && failure == std::string::npos) {
        return Outcome::Unknown;
    }
    const bool isSuccess =
        failure == std::string::npos || (success != std::string::npos && success > failure);
    return isSuccess ? Outcome::Succeeded : Outcome::Failed;
}

Outcome getOutcome(const std::string& command, const std::string& reply)
{
    // As typed, a command may begin with blanks, or have many between two words.
    const std::string words = Board::getSimplified(command);
    for (const Rule& rule : rules) {
        if (words.rfind(rule.beginning, 0) == 0) {
            return rule.isSuccess(reply) ? Outcome::Succeeded : Outcome::Failed;
        }
    }
    return getMarkedOutcome(reply);
}

/// The line that speaks of an error, or else the last one that says anything.
QString getReason(const std::string& reply)
{
    QString last;
    for (const QString& line : Orvex::getReadable(reply).split(QLatin1Char('\n'))) {
        QString words = line.simplified();
        if (words.startsWith(QLatin1String("error"), Qt::CaseInsensitive)) {
            return words;
        }
        if (!words.isEmpty() && !words.contains(QLatin1String(failureMark)) &&
            !words.contains(QLatin1String(successMark))) {
            last = words;
        }
    }
    return last;
}

/// Whether the command takes the file that was chosen on the Bitstream page.
bool takesBitstream(const std::string& command)
{
    const std::string words = Board::getSimplified(command);
    return words.rfind("chip bitstream load ", 0) == 0 ||
           words.rfind("board spi flash program ", 0) == 0;
}

QString getHint(const std::string& command, const QString& reason)
{
    const std::pair<const char*, QString> hints[] = {
        {"permission denied",
         ReplyVerdict::tr(
             "Your user may not open it: check the rights of the file, or of the board's device.")},
        {"no such file",
         takesBitstream(command)
             ? ReplyVerdict::tr("The file has gone: choose it anew on the Bitstream page.")
             : ReplyVerdict::tr("There is nothing where the path leads: check it.")},
        {"no board",
         ReplyVerdict::tr("Connect a board, switch it on, and refresh the boards with F5.")},
        {"not connected",
         ReplyVerdict::tr("Connect the board, switch it on, and refresh the boards with F5.")},
        {"no such device",
         ReplyVerdict::tr("Connect the board, switch it on, and refresh the boards with F5.")},
        {"no space left", ReplyVerdict::tr("The disk is full: make room and try again.")},
        {"busy", ReplyVerdict::tr("Another program uses the board: end it and try again.")},
    };
    for (const auto& [words, hint] : hints) {
        if (reason.contains(QLatin1String(words), Qt::CaseInsensitive)) {
            return hint;
        }
    }
    return {};
}

} // namespace

ReplyVerdict ReplyVerdict::fromReply(const std::string& command, const std::string& reply)
{
    ReplyVerdict verdict;
    verdict.outcome = getOutcome(command, reply);
    if (verdict.outcome == Outcome::Failed) {
        verdict.reason = getReason(reply);
        verdict.hint = getHint(command, verdict.reason);
    }
    return verdict;
}

} // namespace Kestoboard
