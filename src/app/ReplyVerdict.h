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

    /// Reads a whole reply. The counters of a load count, else the later of the two end marks.
    static ReplyVerdict fromReply(const std::string& command, const std::string& reply);

    Outcome outcome = Outcome::Unknown;
    /// The line of a failed reply that says why, as the tool wrote it; empty when there is none.
    QString reason;
    /// What can be done about a reason that is known; empty for any other.
    QString hint;
};

} // namespace Kestoboard

#endif
