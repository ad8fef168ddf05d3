#ifndef BOARD_REPLYBUFFER_H
#define BOARD_REPLYBUFFER_H

#include <QByteArray>
#include <QString>

namespace Board
{

/// The text of a reply while it arrives in pieces, and the search for its end.
///
/// The end is found whatever the pieces are, and what has been searched is not searched again.
class ReplyBuffer
{
public:
    /// Adds a piece, one character a byte, up to its first NUL. Returns whether an end mark stands
    /// in the text now, then and for every piece after it.
    bool add(const QByteArray& bytes);

    /// Forgets the text, and that of the pieces to come, for lack of memory: all but what may be
    /// the beginning of an end mark, so that the end is found all the same. Holds until the text is
    /// taken or cleared.
    void giveUp();
    bool isGivenUp() const { return givenUp; }

    const QString& getText() const { return text; }
    /// The text, which is forgotten.
    QString take();
    void clear();

private:
    QString text;
    int searchStart = 0;
    bool givenUp = false;
};

} // namespace Board

#endif
