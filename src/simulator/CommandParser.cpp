#include "CommandParser.h"

#include "Words.h"

#include <iomanip>
#include <sstream>
#include <vector>

namespace Simulator
{

namespace
{

struct CommandForm {
    CommandKind kind;
    std::vector<std::string> words;
    std::string arguments;
    std::string meaning;
};

const std::vector<CommandForm>& getForms()
{
    static const std::vector<CommandForm> forms{
        {CommandKind::BoardList,
         {"board", "list"},
         "",
         "list the boards, * marks the selected one"},
        {CommandKind::BoardSelect,
         {"board", "select"},
         "N",
         "select a board by its number in the order of the names, from 0"},
        {CommandKind::GetMode, {"board", "get", "mode"}, "", "read the mode"},
        {CommandKind::GetForceBit, {"board", "get", "force_bit"}, "", "read the force bit"},
        {CommandKind::SetMode, {"board", "set", "mode"}, "'MODE'", "change the mode"},
        {CommandKind::SetReset, {"board", "set", "reset"}, "on|off", "hold the chip in reset"},
        {CommandKind::SetClock, {"board", "set", "jtag_clock"}, "on|off", "drive the clock"},
        {CommandKind::SetForceBit, {"board", "set", "force_bit"}, "on|off", "force the mode"},
        {CommandKind::GetMonitor, {"board", "monitor", "get"}, "0", "read all channels"},
        {CommandKind::ProgramFlash,
         {"board", "spi", "flash", "program"},
         "PATH",
         "write a file to the flash and verify it"},
        {CommandKind::LoadBitstream,
         {"chip", "bitstream", "load"},
         "PATH",
         "load a bitstream into the chip"},
        {CommandKind::SelectErrorHandler,
         {"chip", "bitstream", "err_handler", "select"},
         "NAME [outfilepath=PATH]",
         "choose what becomes of load errors: Text or Silent"},
        {CommandKind::Capture,
         {"ksscope", "capture"},
         "FILE FREQUENCY [immediate=1]",
         "record signals as VCD, at a frequency in hertz such as 100E6"},
        {CommandKind::Help, {"help"}, "", "show this list"},
    };
    return forms;
}

constexpr const char* blanks = " \t";

// Where the text after the words of `form` begins, if `line` begins with them.
std::optional<std::size_t> getArgumentOffset(const std::string& line, const CommandForm& form)
{
    std::size_t position = line.find_first_not_of(blanks);
    for (const std::string& word : form.words) {
        if (position == std::string::npos) {
            return std::nullopt;
        }
        const std::size_t end = std::min(line.find_first_of(blanks, position), line.size());
        if (line.compare(position, end - position, word) != 0) {
            return std::nullopt;
        }
        position = line.find_first_not_of(blanks, end);
    }
    return std::min(position, line.size());
}

} // namespace

std::optional<Command> parseCommand(const std::string& line)
{
    for (const CommandForm& form : getForms()) {
        if (const auto offset = getArgumentOffset(line, form)) {
            return Command{form.kind, line.substr(*offset)};
        }
    }
    return std::nullopt;
}

std::string getCommandHelp()
{
    constexpr int column = 66;
    std::ostringstream help;
    help << "Commands of the board tool\n";
    for (const CommandForm& form : getForms()) {
        const std::string usage =
            joinWords(form.words, 0, form.words.size()) + " " + form.arguments;
        help << "  " << std::left << std::setw(column) << usage << form.meaning << "\n";
    }
    return help.str();
}

} // namespace Simulator
