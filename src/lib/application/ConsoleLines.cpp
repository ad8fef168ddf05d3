#include <application/ConsoleLines.h>

#include <foundation/Encoding.h>
#include <foundation/PlainText.h>

#include <QLocale>

#include <algorithm>

namespace Zandu
{

ConsoleLines::ConsoleLines(const Orvex::Message& message)
    : level(message.level)
    , time(message.time)
    , indent(message.depth * indentWidth, QLatin1Char(' '))
    , text(Orvex::getReadable(message.text))
{
    beginLine(0);
}

bool ConsoleLines::hasNext() const
{
    return !done;
}

ConsoleLine ConsoleLines::next()
{
    return cutDue ? takeCut() : takePiece();
}

ConsoleLine ConsoleLines::takePiece()
{
    const bool begins = position == lineStart;
    const ConsoleLine::Kind kind = position == 0 ? ConsoleLine::Kind::First
                                   : begins      ? ConsoleLine::Kind::Further
                                                 : ConsoleLine::Kind::Piece;
    const int end = getPieceEnd();
    const QString piece = Orvex::getVisible(text.mid(position, end - position));
    position = end;
    cutDue = position == lineEnd && !begins;
    if (position == lineEnd && begins) {
        beginLine(nextLine);
    }
    return makeLine(kind, begins ? indent + piece : piece);
}

ConsoleLine ConsoleLines::takeCut()
{
    const QLocale locale;
    const QString said =
        tr("(One line of %1 characters, shown in pieces of %2.)")
            .arg(locale.toString(lineEnd - lineStart), locale.toString(pieceLength));
    beginLine(nextLine);
    return makeLine(ConsoleLine::Kind::Cut, indent + said);
}

/// No character that takes two places is torn apart.
int ConsoleLines::getPieceEnd() const
{
    const int end = std::min(position + pieceLength, lineEnd);
    return end < lineEnd && text.at(end).isLowSurrogate() ? end + 1 : end;
}

ConsoleLine ConsoleLines::makeLine(ConsoleLine::Kind kind, const QString& lineText) const
{
    return ConsoleLine{kind, level, time, lineText};
}

void ConsoleLines::beginLine(int start)
{
    cutDue = false;
    done = start < 0;
    if (done) {
        return;
    }
    const int lineFeed = text.indexOf(QLatin1Char('\n'), start);
    lineStart = start;
    position = start;
    lineEnd = lineFeed < 0 ? text.size() : lineFeed;
    nextLine = lineFeed < 0 ? -1 : lineFeed + 1;
    if (lineFeed > start && text.at(lineEnd - 1) == QLatin1Char('\r')) {
        --lineEnd;
    }
}

} // namespace Zandu
