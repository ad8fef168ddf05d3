#ifndef APP_REPLYVERDICT_H
#define APP_REPLYVERDICT_H

#include <QCoreApplication>
#include <QString>

#include <string>

namespace Kestoboard
{

/// What a reply of the board tool says of its command.
struct ReplyVerdict {
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::ReplyVerdict)

public:
    enum class Outcome { Succeeded, Failed, Unknown };

    /// Reads a whole reply: by the rule by which the engine judges such a command on the console,
    /// which need not be its mark; the later of the two marks where the engine judges nothing.
    static ReplyVerdict fromReply(const std::string& command, const std::string& reply);

    Outcome outcome = Outcome::Unknown;
    /// The line of a failed reply that says why, as the tool wrote it; empty when there is none.
    QString reason;
    /// What can be done about a reason that is known; empty for any other.
    QString hint;
};

} // namespace Kestoboard

#endif
