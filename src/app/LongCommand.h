#ifndef APP_LONGCOMMAND_H
#define APP_LONGCOMMAND_H

namespace Board
{
class CommandHandler;
} // namespace Board

namespace Kestoboard
{

/// Whether a command writes a file to a board, a load or a flash: what is left alone halfway leaves
/// a board that nobody knows the state of.
///
/// By its text as well as by its type: what is sent as a text, typed or from a command file, has
/// the type of a setting.
bool isBoardWrite(const Board::CommandHandler* handler);

/// Whether how long a command takes depends on a file or on the board, so that a long silence is
/// nothing unusual: a load, a flash or a capture.
bool isTransfer(const Board::CommandHandler* handler);

} // namespace Kestoboard

#endif
