#ifndef BENCHMARKS_TOOLPIPES_H
#define BENCHMARKS_TOOLPIPES_H

#include <cstdio>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace Bench
{

/// The least that a client of the board tool can be: the tool as a child with two pipes, its
/// replies gathered until an end mark stands in them, and the transcript that the panel writes too.
///
/// Whatever fails ends the process: there is nothing to measure then.
class ToolPipes
{
public:
    /// Starts the tool that is first on the search path; the transcript is in the current
    /// directory.
    ToolPipes();
    /// Ends the tool's input and waits for its end.
    ~ToolPipes();
    ToolPipes(const ToolPipes&) = delete;
    ToolPipes& operator=(const ToolPipes&) = delete;

    /// Sends a command and returns when its whole reply is in; valid until the next one.
    std::string_view exchange(const std::string& command);

private:
    void start(int toTool[2], int fromTool[2]);
    void takePiece();
    void dropReply();
    void log(const char* bytes, std::size_t count);

    pid_t tool;
    int input;
    int output;
    std::FILE* transcript;
    char* reply;
    std::size_t size;
    std::size_t capacity;
};

} // namespace Bench

#endif
