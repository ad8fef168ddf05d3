#include "app/LastWords.h"

#include <foundation/Console.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <unistd.h>

namespace Kestoboard
{

namespace
{

const std::size_t lineLimit = 30;
const std::size_t blanksPerStep = 2;

bool isArmed = false;

/// At this point parts of Qt may be gone: nothing of it is used that keeps state of its own.
void tellAtExit()
{
    if (isArmed) {
        const std::string text = LastWords::getText();
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fflush(stderr);
    }
}

std::string getTranscriptPath()
{
    char* const directory = getcwd(nullptr, 0);
    const std::string path =
        (directory != nullptr ? std::string(directory) + "/" : std::string()) + "ksbase.log";
    std::free(directory);
    return path;
}

} // namespace

LastWords::LastWords()
{
    static const bool isRegistered = std::atexit(tellAtExit) == 0;
    isArmed = isRegistered;
}

LastWords::~LastWords()
{
    isArmed = false;
}

std::string LastWords::getText()
{
    const std::deque<Orvex::Message> messages = Orvex::console->getRecentMessages();
    const std::size_t first = messages.size() - std::min(messages.size(), lineLimit);
    std::string text = "Kestoboard has ended. The last lines of its console were:\n";
    for (std::size_t index = first; index < messages.size(); ++index) {
        const Orvex::Message& message = messages[index];
        const std::size_t steps = static_cast<std::size_t>(message.depth) + 1;
        text += std::string(blanksPerStep * steps, ' ') + message.text + "\n";
    }
    return text + "The transcript of the board tool is " + getTranscriptPath() + "\n";
}

} // namespace Kestoboard
