#ifndef BOARD_BOARDLISTING_H
#define BOARD_BOARDLISTING_H

#include <list>
#include <string>

namespace Board
{

/// What one board line of the tool's listing says.
struct ListedBoard {
    std::string name;        ///< empty when the line has fewer than three tokens
    bool isSelected = false; ///< the line starts with "*"
};

/// The boards of a reply to "board list", in the order of their lines.
///
/// A line is a board line when it holds the marker "0x534B" anywhere; all others are passed over.
/// The name is made of the blank-separated tokens 2 to 7 of the line, counted from 0.
std::list<ListedBoard> parseBoardListing(const std::string& reply);

} // namespace Board

#endif
