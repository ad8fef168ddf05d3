// Stands between a panel and its board tool: passes on what goes either way, the replies in pieces
// of random size, keeps a record of it, and ends at an appointed moment.
//
//     tool_relay TOOL DIRECTORY SEED COMMAND BYTES DELAY SIGNAL TIME
//
// TOOL is the board tool. With the command of number COMMAND, from 1, BYTES bytes of its reply are
// passed on, then DELAY microseconds are waited, and then SIGNAL hits the process; for 0 it exits
// with status 0. TIME, if not 0, is the microseconds from the start after which the alarm signal
// ends the process wherever it stands.
//
// In DIRECTORY the files *.begun get everything before it is written, the files *.done once it has
// been written, and `received` every line that has come.

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Plan {
    unsigned seed;
    long command;
    long bytes;
    useconds_t delay;
    int signal;
    long time;
};

void writeAll(int descriptor, const std::string& bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + at, bytes.size() - at);
        if (count <= 0) {
            std::_Exit(3);
        }
        at += static_cast<std::size_t>(count);
    }
}

/// A file that a death at any moment leaves as it stands.
int openRecord(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        std::_Exit(3);
    }
    return descriptor;
}

/// A channel towards the panel with the record of what went through it. A piece is small enough for
/// the pipe to take it as a whole or not at all.
class Channel
{
public:
    Channel(int descriptor, const std::string& record)
        : output(descriptor)
        , begun(openRecord(record + ".begun"))
        , done(openRecord(record + ".done"))
    {
    }

    void pass(const std::string& piece) const
    {
        writeAll(begun, piece);
        writeAll(output, piece);
        writeAll(done, piece);
    }

private:
    const int output;
    const int begun;
    const int done;
};

/// The tool itself, as a child of this process.
class Tool
{
public:
    explicit Tool(const char* path)
    {
        int commands[2];
        int replies[2];
        if (::pipe2(commands, O_CLOEXEC) != 0 || ::pipe2(replies, O_CLOEXEC) != 0) {
            std::_Exit(3);
        }
        process = ::fork();
        if (process == 0) {
            ::dup2(commands[0], STDIN_FILENO);
            ::dup2(replies[1], STDERR_FILENO);
            ::execl(path, path, "-s", "-x", nullptr);
            std::_Exit(3);
        }
        ::close(commands[0]);
        ::close(replies[1]);
        input = commands[1];
        output = replies[0];
    }

    /// The whole reply, up to the line end after its mark.
    std::string ask(const std::string& line) const
    {
        writeAll(input, line + '\n');
        std::string reply;
        char bytes[4096];
        while (!isComplete(reply)) {
            const ssize_t count = ::read(output, bytes, sizeof bytes);
            if (count <= 0) {
                std::_Exit(3);
            }
            reply.append(bytes, static_cast<std::size_t>(count));
        }
        return reply;
    }

    void end() const
    {
        ::close(input);
        ::waitpid(process, nullptr, 0);
    }

private:
    static bool isComplete(const std::string& reply)
    {
        return !reply.empty() && reply.back() == '\n' &&
               (reply.find("COMMAND SUCCEEDED") != std::string::npos ||
                reply.find("COMMAND FAILED") != std::string::npos);
    }

    pid_t process;
    int input;
    int output;
};

bool readLine(std::string* line)
{
    line->clear();
    char character = 0;
    while (::read(STDIN_FILENO, &character, 1) == 1) {
        if (character == '\n') {
            return true;
        }
        *line += character;
    }
    return false;
}

void passInPieces(const Channel& errors, const std::string& reply, std::mt19937* random)
{
    for (std::size_t at = 0; at < reply.size();) {
        std::size_t size = (*random)() % 4 == 0 ? 1 + (*random)() % 20 : reply.size() - at;
        // The last line end comes with its mark, so that the next command begins a line of the
        // transcript.
        size += at + size + 1 == reply.size() ? 1 : 0;
        errors.pass(reply.substr(at, size));
        at += size;
        if ((*random)() % 4 == 0) {
            ::usleep((*random)() % 300);
        }
    }
}

std::string getBeginning(const std::string& reply, long bytes)
{
    const auto size = static_cast<std::size_t>(bytes);
    return size + 1 < reply.size() ? reply.substr(0, size) : reply;
}

[[noreturn]] void die(const Plan& plan)
{
    ::usleep(plan.delay);
    if (plan.signal != 0) {
        // Whoever else handles it would have something to say.
        std::signal(plan.signal, SIG_DFL);
        ::raise(plan.signal);
    }
    std::_Exit(0);
}

void setAlarm(long microseconds)
{
    itimerval moment{};
    moment.it_value.tv_sec = microseconds / 1'000'000;
    moment.it_value.tv_usec = microseconds % 1'000'000;
    ::setitimer(ITIMER_REAL, &moment, nullptr);
}

void serve(const Tool& tool, const std::string& directory, const Plan& plan)
{
    const Channel errors(STDERR_FILENO, directory + "/errors");
    const Channel output(STDOUT_FILENO, directory + "/output");
    const int received = openRecord(directory + "/received");
    std::mt19937 random(plan.seed);
    std::string line;
    for (long number = 1; readLine(&line); ++number) {
        writeAll(received, line + '\n');
        output.pass("received " + std::to_string(number) + '\n');
        const bool isLast = number == plan.command;
        if (isLast && plan.bytes == 0) {
            die(plan);
        }
        const std::string reply = tool.ask(line);
        if (isLast) {
            passInPieces(errors, getBeginning(reply, plan.bytes), &random);
            die(plan);
        }
        passInPieces(errors, reply, &random);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 9) {
        return 3;
    }
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    const Plan plan{static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10)),
                    std::strtol(argv[4], nullptr, 10),
                    std::strtol(argv[5], nullptr, 10),
                    static_cast<useconds_t>(std::strtoul(argv[6], nullptr, 10)),
                    static_cast<int>(std::strtol(argv[7], nullptr, 10)),
                    std::strtol(argv[8], nullptr, 10)};
    const Tool tool(argv[1]);
    setAlarm(plan.time);
    serve(tool, argv[2], plan);
    tool.end();
    return 0;
}
