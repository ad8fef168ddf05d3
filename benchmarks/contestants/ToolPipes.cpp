#include "ToolPipes.h"

#include <algorithm>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace Bench
{

namespace
{

using namespace std::string_view_literals;

const std::size_t pieceSize = 64UL * 1024;
const std::string_view success = "COMMAND SUCCEEDED"sv;
const std::string_view failure = "COMMAND FAILED"sv;

void giveUpIf(bool hasFailed, const char* what)
{
    if (hasFailed) {
        std::perror(what);
        std::exit(EXIT_FAILURE);
    }
}

bool hasMark(std::string_view text)
{
    return text.find(success) != std::string_view::npos ||
           text.find(failure) != std::string_view::npos;
}

} // namespace

ToolPipes::ToolPipes()
    : tool(-1)
    , input(-1)
    , output(-1)
    , transcript(std::fopen("ksbase.log", "w"))
    , reply(nullptr)
    , size(0)
    , capacity(0)
{
    giveUpIf(transcript == nullptr, "ksbase.log");
    int toTool[2];
    int fromTool[2];
    giveUpIf(pipe(toTool) != 0 || pipe(fromTool) != 0, "pipe");
    start(toTool, fromTool);
    close(toTool[0]);
    close(fromTool[1]);
    input = toTool[1];
    output = fromTool[0];
}

void ToolPipes::start(int toTool[2], int fromTool[2])
{
    tool = fork();
    giveUpIf(tool < 0, "fork");
    if (tool == 0) {
        dup2(toTool[0], STDIN_FILENO);
        dup2(fromTool[1], STDERR_FILENO);
        for (const int end : {toTool[0], toTool[1], fromTool[0], fromTool[1]}) {
            close(end);
        }
        execlp("ksbase2_cli", "ksbase2_cli", "-s", "-x", nullptr);
        _exit(EXIT_FAILURE);
    }
}

ToolPipes::~ToolPipes()
{
    close(input);
    close(output);
    waitpid(tool, nullptr, 0);
    std::fclose(transcript);
    dropReply();
}

std::string_view ToolPipes::exchange(const std::string& command)
{
    const std::string line = command + '\n';
    log((">" + line).data(), line.size() + 1);
    giveUpIf(write(input, line.data(), line.size()) != static_cast<ssize_t>(line.size()), "write");
    // Each reply gets memory of its own, as the panel's do.
    dropReply();
    std::size_t searched = 0;
    do {
        // A mark may have begun in the piece before.
        searched = size < success.size() ? 0 : size - success.size();
        takePiece();
    } while (!hasMark(std::string_view(reply, size).substr(searched)));
    return std::string_view(reply, size);
}

void ToolPipes::takePiece()
{
    if (capacity - size < pieceSize) {
        capacity = std::max(2 * capacity, pieceSize);
        // Large memory is moved by the system without copying a byte.
        reply = static_cast<char*>(std::realloc(reply, capacity));
        giveUpIf(reply == nullptr, "realloc");
    }
    const ssize_t count = read(output, reply + size, pieceSize);
    giveUpIf(count <= 0, "read");
    log(reply + size, static_cast<std::size_t>(count));
    size += static_cast<std::size_t>(count);
}

void ToolPipes::dropReply()
{
    std::free(reply);
    reply = nullptr;
    size = 0;
    capacity = 0;
}

void ToolPipes::log(const char* bytes, std::size_t count)
{
    giveUpIf(std::fwrite(bytes, 1, count, transcript) != count || std::fflush(transcript) != 0,
             "ksbase.log");
}

} // namespace Bench
