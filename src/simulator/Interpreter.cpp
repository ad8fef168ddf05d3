#include "Interpreter.h"

#include "Bench.h"
#include "Capture.h"
#include "Patience.h"
#include "Refusal.h"
#include "Replies.h"
#include "Transfer.h"
#include "Words.h"

#include <charconv>

namespace Simulator
{

namespace
{

// How long a capture waits for its trigger, before the time scale.
constexpr double triggerSeconds = 1.0;

const std::string done = "OK\n";

std::string trimmed(const std::string& text)
{
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

void requireNothing(const std::string& argument)
{
    if (!trimmed(argument).empty()) {
        throw Refusal("This command takes no argument");
    }
}

long parseNumber(const std::string& argument)
{
    const std::string text = trimmed(argument);
    const char* end = text.data() + text.size();
    long number = 0;
    const auto parsed = std::from_chars(text.data(), end, number);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end) {
        throw Refusal("A whole number must follow");
    }
    return number;
}

bool parseSwitch(const std::string& argument)
{
    const std::string text = trimmed(argument);
    if (text != "on" && text != "off") {
        throw Refusal("Either on or off must follow");
    }
    return text == "on";
}

} // namespace

Interpreter::Interpreter(Bench& boards, const Patience& waiting)
    : bench(boards)
    , patience(waiting)
{
}

std::string Interpreter::answer(const std::string& line)
{
    const auto command = parseCommand(line);
    if (!command) {
        return getFailure("Unknown command '" + getShown(line) + "', help lists the commands");
    }
    try {
        return getSuccess(carryOut(*command));
    } catch (const std::exception& failure) {
        return getFailure(failure.what());
    }
}

std::string Interpreter::carryOut(const Command& command)
{
    const std::string& argument = command.argument;
    switch (command.kind) {
    case CommandKind::BoardList:
        requireNothing(argument);
        return bench.getListing();
    case CommandKind::BoardSelect:
        return select(argument);
    case CommandKind::GetMode:
        requireNothing(argument);
        return bench.getSelected().getMode() + "\n";
    case CommandKind::GetForceBit:
        requireNothing(argument);
        return bench.getSelected().getForceBit() ? "Forcebit is set\n" : "Forcebit is not set\n";
    case CommandKind::SetMode:
        return setMode(argument);
    case CommandKind::SetReset:
        return setBit(argument, [](Board& board, bool value) { board.setResetBit(value); });
    case CommandKind::SetClock:
        return setBit(argument, [](Board& board, bool value) { board.setClockBit(value); });
    case CommandKind::SetForceBit:
        return setBit(argument, [](Board& board, bool value) { board.setForceBit(value); });
    case CommandKind::GetMonitor:
        return getMonitor(argument);
    case CommandKind::ProgramFlash:
        return Transfer(bench.getSelected(), bench.getScenario(), patience).programFlash(argument);
    case CommandKind::LoadBitstream:
        return Transfer(bench.getSelected(), bench.getScenario(), patience).load(argument);
    case CommandKind::SelectErrorHandler:
        return selectErrorHandler(argument);
    case CommandKind::Capture:
        return capture(argument);
    case CommandKind::Help:
        requireNothing(argument);
        return getCommandHelp();
    }
    throw Refusal("This command has no meaning");
}

std::string Interpreter::select(const std::string& argument)
{
    bench.select(parseNumber(argument));
    return done;
}

std::string Interpreter::setMode(const std::string& argument)
{
    const std::string quoted = trimmed(argument);
    if (quoted.size() < 2 || quoted.front() != '\'' || quoted.back() != '\'') {
        throw Refusal("The mode must stand between single quotes, such as 'Jtag only'");
    }
    bench.getSelected().setMode(quoted.substr(1, quoted.size() - 2));
    return done;
}

std::string Interpreter::setBit(const std::string& argument,
                                void (*store)(Board& board, bool value))
{
    const bool value = parseSwitch(argument);
    store(bench.getSelected(), value);
    return done;
}

std::string Interpreter::getMonitor(const std::string& argument)
{
    if (parseNumber(argument) != 0) {
        throw Refusal("The only monitor is 0");
    }
    return bench.getSelected().readMonitor();
}

std::string Interpreter::selectErrorHandler(const std::string& argument)
{
    static const std::string option = "outfilepath=";
    const std::string name = argument.substr(0, argument.find_first_of(" \t"));
    const std::size_t rest = argument.find_first_not_of(" \t", name.size());

    ErrorHandler handler;
    handler.name = name;
    if (name != "Text" && name != "Silent") {
        throw Refusal("The error handler must be Text or Silent");
    }
    if (rest != std::string::npos) {
        if (argument.compare(rest, option.size(), option) != 0) {
            throw Refusal("Only outfilepath=PATH can follow the name");
        }
        handler.outFilePath = argument.substr(rest + option.size());
        if (handler.outFilePath.empty()) {
            throw Refusal("A path must follow outfilepath=");
        }
    }
    bench.getSelected().setErrorHandler(handler);
    return done;
}

std::string Interpreter::capture(const std::string& argument)
{
    const CaptureRequest request = CaptureRequest::parse(argument);
    const Board& board = bench.getSelected();
    if (board.getSetup().captureRefused) {
        throw Refusal("Capture refused, the trace memory is in use");
    }
    if (!request.immediate) {
        const double seconds = triggerSeconds * bench.getScenario().timeScale;
        patience.wait(std::chrono::duration<double>(seconds));
    }
    return writeCapture(board, request);
}

} // namespace Simulator
