#ifndef SIMULATOR_REPLIES_H
#define SIMULATOR_REPLIES_H

#include <string>

namespace Simulator
{

/// The answer to a command that was carried out: `lines`, each with its line end, and the mark.
std::string getSuccess(const std::string& lines);

/// The answer to a command that was not carried out: the line "Error: " and `reason`, and the mark.
std::string getFailure(const std::string& reason);

/// A text from outside as it can stand in an answer: one line of bounded length, without control
/// characters and without anything that could be taken for the end of the answer.
std::string getShown(const std::string& text);

/// Where the last line of `answer`, the one with the mark, begins.
std::size_t getMarkOffset(const std::string& answer);

} // namespace Simulator

#endif
