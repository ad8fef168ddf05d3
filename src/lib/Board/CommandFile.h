#ifndef BOARD_COMMANDFILE_H
#define BOARD_COMMANDFILE_H

#include <string>

class QTextStream;

namespace Board
{

/// Reads on to the next command of a command file: a line that is, simplified, neither empty nor a
/// comment that "#" begins. False, with the command untouched, when there is none.
bool readCommand(QTextStream* lines, std::string* command);

} // namespace Board

#endif
