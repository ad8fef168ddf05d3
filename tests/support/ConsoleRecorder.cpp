#include "support/ConsoleRecorder.h"

#include <foundation/Encoding.h>

namespace Test
{

namespace
{

QString getMark(Orvex::Level level)
{
    switch (level) {
    case Orvex::Level::Error:
        return QStringLiteral("E: ");
    case Orvex::Level::Warning:
        return QStringLiteral("W: ");
    case Orvex::Level::Normal:
        break;
    }
    return {};
}

} // namespace

ConsoleRecorder::ConsoleRecorder()
{
    connect(Orvex::console, &Orvex::Console::messageAdded, this,
            [this](const Orvex::Message& message) { messages += message; });
}

QStringList ConsoleRecorder::getLines() const
{
    QStringList lines;
    for (const Orvex::Message& message : messages) {
        lines += QString(2 * message.depth, QLatin1Char(' ')) + getMark(message.level) +
                 Orvex::getReadable(message.text);
    }
    return lines;
}

QStringList ConsoleRecorder::takeLines()
{
    const QStringList lines = getLines();
    clear();
    return lines;
}

} // namespace Test
