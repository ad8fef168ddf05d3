#ifndef APPLICATION_CONSOLELINES_H
#define APPLICATION_CONSOLELINES_H

#include <foundation/Message.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

namespace Zandu
{

/// A line as the console shows it.
struct ConsoleLine {
    enum class Kind {
        First,   ///< the first line of a message
        Further, ///< another line of the same message
        Piece,   ///< goes on with the line above, which is too long to be shown in one
        Cut,     ///< said by the console: the line above is shown in pieces
        Dropped, ///< said by the console: lines were dropped here
    };

    Kind kind = Kind::First;
    Orvex::Level level = Orvex::Level::Normal;
    QDateTime time;
    QString text;
};

/// Cuts a message into the lines that show it, one at a time, so that a huge message can be shown
/// bit by bit.
///
/// Every line of the message stands as far in as the message. Control characters, and others that
/// would act on the text around them instead of showing, are replaced by visible signs.
class ConsoleLines
{
    Q_DECLARE_TR_FUNCTIONS(Zandu::ConsoleLines)

public:
    /// Characters of a line of the message that are shown in one line.
    static constexpr int pieceLength = 2000;
    /// Blanks for a step of depth.
    static constexpr int indentWidth = 4;

    explicit ConsoleLines(const Orvex::Message& message);

    bool hasNext() const;
    /// Requires hasNext.
    ConsoleLine next();

private:
    ConsoleLine takePiece();
    ConsoleLine takeCut();
    int getPieceEnd() const;
    ConsoleLine makeLine(ConsoleLine::Kind kind, const QString& lineText) const;
    void beginLine(int start);

    Orvex::Level level;
    QDateTime time;
    QString indent;
    QString text;
    int lineStart = 0;
    int lineEnd = 0;     // before the line end's own characters
    int nextLine = 0;    // past them; -1 after the last line
    int position = 0;    // of what has not been shown
    bool cutDue = false; // all pieces are out, the line about them is not
    bool done = false;
};

} // namespace Zandu

#endif
