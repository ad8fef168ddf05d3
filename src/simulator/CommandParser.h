#ifndef SIMULATOR_COMMAND_PARSER_H
#define SIMULATOR_COMMAND_PARSER_H

#include <optional>
#include <string>

namespace Simulator
{

/// The commands of the tool.
enum class CommandKind {
    BoardList,
    BoardSelect,
    GetMode,
    GetForceBit,
    SetMode,
    SetReset,
    SetClock,
    SetForceBit,
    GetMonitor,
    ProgramFlash,
    LoadBitstream,
    SelectErrorHandler,
    Capture,
    Help,
};

/// A line that begins with the words of a command.
struct Command {
    CommandKind kind;
    std::string argument; ///< what follows the words, without the blanks between; as it came
};

/// Finds the command that `line` begins with. Any number of blanks separates its words.
std::optional<Command> parseCommand(const std::string& line);

/// The list of all commands, one line each.
std::string getCommandHelp();

} // namespace Simulator

#endif
