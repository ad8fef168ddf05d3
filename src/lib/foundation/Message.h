#ifndef FOUNDATION_MESSAGE_H
#define FOUNDATION_MESSAGE_H

#include <QDateTime>
#include <QMetaType>

#include <string>

namespace Orvex
{

enum class Level {
    Normal,
    Warning,
    Error,
};

/// One entry of the console.
struct Message {
    Level level = Level::Normal;
    /// How many steps in the entry stands, 0 or more.
    int depth = 0;
    /// Bytes as they came; Orvex::getReadable makes them fit to be shown. May have several lines.
    std::string text;
    /// When it was said, in local time.
    QDateTime time;
};

} // namespace Orvex

Q_DECLARE_METATYPE(Orvex::Message)

#endif
