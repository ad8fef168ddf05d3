#include "app/ReplyVerdict.h"

#include <foundation/Encoding.h>

#include <QCoreApplication>
#include <QStringList>

namespace Kestoboard
{

namespace
{

const char successMark[] = "COMMAND SUCCEEDED";
const char failureMark[] = "COMMAND FAILED";

bool isLoad(const std::string& command)
{
    return command.rfind("chip bitstream load ", 0) == 0;
}

/// A load is judged by its counters as on the console: it may end with errors and the mark of
/// success.
ReplyVerdict::Outcome getLoadOutcome(const std::string& reply)
{
    const bool isFaultless = reply.find("Counters: 0 exception(s), 0 read32 timeout(s), "
                                        "0 32bit word(s) read in error") != std::string::npos;
    return isFaultless ? ReplyVerdict::Outcome::Succeeded : ReplyVerdict::Outcome::Failed;
}

ReplyVerdict::Outcome getOutcome(const std::string& reply)
{
    const std::size_t success = reply.rfind(successMark);
    const std::size_t failure = reply.rfind(failureMark);
    if (success == std::string::npos && failure == std::string::npos) {
        return ReplyVerdict::Outcome::Unknown;
    }
    const bool isSuccess =
        failure == std::string::npos || (success != std::string::npos && success > failure);
    return isSuccess ? ReplyVerdict::Outcome::Succeeded : ReplyVerdict::Outcome::Failed;
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

QString getHint(const QString& reason)
{
    const std::pair<const char*, QString> hints[] = {
        {"permission denied",
         ReplyVerdict::tr(
             "Your user may not open it: check the rights of the file, or of the board's device.")},
        {"no such file",
         ReplyVerdict::tr("The file has gone: choose it anew on the Bitstream page.")},
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
    verdict.outcome = isLoad(command) ? getLoadOutcome(reply) : getOutcome(reply);
    if (verdict.outcome == Outcome::Failed) {
        verdict.reason = getReason(reply);
        verdict.hint = getHint(verdict.reason);
    }
    return verdict;
}

} // namespace Kestoboard
