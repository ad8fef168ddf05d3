#include "support/Screen.h"

#include <csignal>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Test
{

namespace
{

/// In the new process: becomes the server, which writes the number that it has found free.
[[noreturn]] void serve(int numberPipe)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(numberPipe, STDOUT_FILENO);
    close(numberPipe);
    execlp("Xvfb", "Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp",
           "-noreset", static_cast<char*>(nullptr));
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

Screen::Screen()
    : server(-1)
{
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    server = fork();
    if (server == 0) {
        close(ends[0]);
        serve(ends[1]);
    }
    close(ends[1]);
    const QByteArray number = readLine(ends[0]);
    close(ends[0]);
    if (!number.isEmpty()) {
        name = ':' + number;
    }
}

Screen::~Screen()
{
    if (server > 0) {
        kill(server, SIGTERM);
        waitpid(server, nullptr, 0);
    }
}

} // namespace Test
