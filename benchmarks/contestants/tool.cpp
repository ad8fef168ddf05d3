// The least that a board tool can be: it answers at once, and does nothing.
//
// Everything is answered with OK, but for these:
//   large N     N bytes stand before the end mark
//   prepare N   makes the reply to large N, without sending it
//   board list  the listing of the boards: none at the start
//   board get force_bit  that it is not set
//   boards N    from now on there are N boards
//   delay N     from now on each command takes N microseconds
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <unistd.h>

namespace
{

const char mark[] = "COMMAND SUCCEEDED\n";
const std::size_t inputSize = 64UL * 1024;
const std::size_t lineLength = 79;

/// The number that follows a word at the beginning of a command; -1 for another command.
long getNumberAfter(const std::string& word, const std::string& command)
{
    return command.compare(0, word.size(), word) == 0
               ? std::strtol(&command[word.size()], nullptr, 10)
               : -1;
}

std::string makeListing(long boards)
{
    std::string listing = "Boards connected: " + std::to_string(boards) + '\n';
    for (long number = 0; number < boards; ++number) {
        std::array<char, 80> line;
        std::snprintf(line.data(), line.size(), "%c 0x534B%04lX KS-Dev %06ld\n",
                      number == 0 ? '*' : '-', number, number);
        listing += line.data();
    }
    return listing + mark;
}

std::string makeLarge(std::size_t bytes)
{
    std::string reply(bytes, 'x');
    for (std::size_t at = lineLength; at < bytes; at += lineLength + 1) {
        reply[at] = '\n';
    }
    if (bytes > 0) {
        reply.back() = '\n';
    }
    return reply + mark;
}

/// Answers commands, each by one write as far as the pipe takes it.
class Tool
{
public:
    Tool()
        : listing(makeListing(0))
        , plain(std::string("OK\n") + mark)
        , forceBit(std::string("Forcebit is not set\n") + mark)
        , largeSize(-1)
    {
    }

    void answer(const std::string& command)
    {
        if (delay.count() > 0) {
            std::this_thread::sleep_for(delay);
        }
        send(getReply(command));
    }

private:
    const std::string& getReply(const std::string& command)
    {
        if (command == "board list") {
            return listing;
        }
        if (command == "board get force_bit") {
            return forceBit;
        }
        if (const long bytes = getNumberAfter("large ", command); bytes >= 0) {
            return getLarge(bytes);
        }
        if (const long bytes = getNumberAfter("prepare ", command); bytes >= 0) {
            getLarge(bytes);
            return plain;
        }
        if (const long boards = getNumberAfter("boards ", command); boards >= 0) {
            listing = makeListing(boards);
        } else if (const long time = getNumberAfter("delay ", command); time >= 0) {
            delay = std::chrono::microseconds(time);
        }
        return plain;
    }

    // Kept, so that it can be made before anything is measured.
    const std::string& getLarge(long bytes)
    {
        if (largeSize != bytes) {
            large = makeLarge(static_cast<std::size_t>(bytes));
            largeSize = bytes;
        }
        return large;
    }

    static void send(const std::string& reply)
    {
        for (std::size_t sent = 0; sent < reply.size();) {
            const ssize_t count = write(STDERR_FILENO, &reply[sent], reply.size() - sent);
            if (count <= 0) {
                std::exit(EXIT_FAILURE);
            }
            sent += static_cast<std::size_t>(count);
        }
    }

    std::chrono::microseconds delay{0};
    std::string listing;
    const std::string plain;
    const std::string forceBit;
    std::string large;
    long largeSize;
};

} // namespace

int main()
{
    Tool tool;
    std::string pending;
    std::array<char, inputSize> piece;
    for (ssize_t count = 0; (count = read(STDIN_FILENO, piece.data(), piece.size())) > 0;) {
        pending.append(piece.data(), static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = pending.find('\n')) != std::string::npos;) {
            tool.answer(pending.substr(0, end));
            pending.erase(0, end + 1);
        }
    }
}
