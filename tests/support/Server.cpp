#include "support/Server.h"

#include <csignal>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Test
{

namespace
{

std::vector<char*> getPointers(const std::vector<std::string>& command)
{
    std::vector<char*> pointers;
    for (const std::string& word : command) {
        pointers.push_back(const_cast<char*>(word.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// In the new process: becomes the server.
[[noreturn]] void serve(char* const* words, int output)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(output, STDOUT_FILENO);
    close(output);
    execvp(words[0], words);
    _exit(127);
}

QByteArray readLine(int descriptor)
{
    QByteArray line;
    char character = 0;
    while (read(descriptor, &character, 1) == 1 && character != '\n') {
        line += character;
    }
    return line;
}

} // namespace

Server::Server(const std::vector<std::string>& command)
    : process(-1)
{
    const std::vector<char*> words = getPointers(command);
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    process = fork();
    if (process == 0) {
        close(ends[0]);
        serve(words.data(), ends[1]);
    }
    close(ends[1]);
    place = readLine(ends[0]);
    close(ends[0]);
}

Server::~Server()
{
    if (process > 0) {
        kill(process, SIGTERM);
        waitpid(process, nullptr, 0);
    }
}

} // namespace Test
