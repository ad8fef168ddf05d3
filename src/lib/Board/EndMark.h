#ifndef BOARD_ENDMARK_H
#define BOARD_ENDMARK_H

#include <QString>

namespace Board
{

/// The length of the longer of the two marks that end a reply, in characters.
extern const int longestEndMark;

/// The position of the first mark that ends a reply, "COMMAND SUCCEEDED" or "COMMAND FAILED", from
/// a position on; -1 when there is none. Nothing else about the text matters: no line start, no
/// line end.
int findEndMark(const QString& text, int from);

} // namespace Board

#endif
