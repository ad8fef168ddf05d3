#include "Session.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace
{

constexpr int usageStatus = 2;

const char* const usage =
    "Usage: ksbase2_cli -s -x, with commands on standard input and answers on standard error.\n";

void printHelp()
{
    std::cout << usage
              << "\nA simulated board tool: it answers like the tool of real boards, without any.\n"
                 "\n  -s         serve commands, one a line, until the end of standard input\n"
                 "  -x         end each answer with COMMAND SUCCEEDED or COMMAND FAILED\n"
                 "  --help     show this text\n"
                 "  --version  show the version\n"
                 "\nKESTOBOARD_SCENARIO in the environment names a scenario file with the boards;\n"
                 "without it there is one board. The command help lists the commands.\n";
}

std::string getScenarioPath()
{
    const char* path = std::getenv("KESTOBOARD_SCENARIO");
    return path == nullptr ? std::string() : std::string(path);
}

int serve()
{
    // An answer that nobody reads any more is no reason to end; the end of the input is.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    return Simulator::Session(getScenarioPath()).run(std::cin);
}

} // namespace

int main(int argc, char** argv)
{
    const std::multiset<std::string> arguments(argv + 1, argv + argc);
    if (arguments == std::multiset<std::string>{"-s", "-x"}) {
        return serve();
    }
    if (arguments == std::multiset<std::string>{"--help"}) {
        printHelp();
        return 0;
    }
    if (arguments == std::multiset<std::string>{"--version"}) {
        std::cout << "ksbase2_cli (simulated) " << KESTOBOARD_VERSION << "\n";
        return 0;
    }
    std::cerr << usage;
    return usageStatus;
}
