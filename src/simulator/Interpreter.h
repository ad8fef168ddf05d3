#ifndef SIMULATOR_INTERPRETER_H
#define SIMULATOR_INTERPRETER_H

#include "CommandParser.h"

#include <string>

namespace Simulator
{

class Bench;
class Board;
class Patience;

/// Carries commands out on the boards of a bench and words the answers.
class Interpreter
{
public:
    /// Both must outlive the interpreter.
    Interpreter(Bench& boards, const Patience& waiting);

    /// The whole answer to one line, with its mark. Takes the time that the command takes; throws
    /// nothing: what cannot be done becomes an answer that says why.
    std::string answer(const std::string& line);

private:
    std::string carryOut(const Command& command);
    std::string select(const std::string& argument);
    std::string setMode(const std::string& argument);
    std::string setBit(const std::string& argument, void (*store)(Board& board, bool value));
    std::string getMonitor(const std::string& argument);
    std::string selectErrorHandler(const std::string& argument);
    std::string capture(const std::string& argument);

    Bench& bench;
    const Patience& patience;
};

} // namespace Simulator

#endif
