#ifndef FUZZ_TARGETS_H
#define FUZZ_TARGETS_H

#include <string>
#include <vector>

/// Everything that reads foreign text, each fed with any bytes. A target compares what is read with
/// a plain model, or checks what is promised of every input, and throws a Violation where they
/// part.
namespace Fuzz
{

/// The reply to "board list".
void listing(const std::string& bytes);
/// The reply to "board monitor get".
void monitor(const std::string& bytes);
/// The judgements of all other replies; the first line is the command of the application's.
void replies(const std::string& bytes);
/// The search for the end of a reply: the bytes up to the first line feed say where it is cut.
void endMark(const std::string& bytes);
/// Splitting and matching: the first line is the separator.
void split(const std::string& bytes);
/// A command file.
void commandFile(const std::string& bytes);
/// The file of the settings: the recent files and the form of the Scope page.
void settings(const std::string& bytes);
/// The scenario of the simulated tool.
void scenario(const std::string& bytes);
/// The console, from the messages to the text that is shown: a message a line.
void console(const std::string& bytes);
/// Text on its way to a terminal.
void terminal(const std::string& bytes);

struct Target {
    /// Also the folder of its corpus.
    const char* name;
    void (*run)(const std::string& bytes);
};

const std::vector<Target>& getTargets();

} // namespace Fuzz

#endif
