#include "app/LastWords.h"

#include "app/Display.h"

#include <foundation/Console.h>
#include <foundation/PlainText.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <spawn.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Kestoboard
{

namespace
{

const std::size_t lineLimit = 30;
const std::size_t blanksPerStep = 2;

// At the exit parts of Qt may be gone: nothing of it is used there that keeps state of its own.
bool isArmed = false;
bool isShown = false;
std::string reason;
std::vector<std::string> showCommand;

/// What stands around the lines of the console, put into words as long as the toolkit is there.
struct Sentences {
    std::string headline;
    /// With `pathMark` in place of the path.
    std::string transcript;
};

const char pathMark[] = "%1";

const Sentences& getSentences()
{
    static const Sentences sentences{
        LastWords::tr("Kestoboard has ended. The last lines of its console were:").toStdString(),
        LastWords::tr("The transcript of the board tool is %1").toStdString()};
    return sentences;
}

std::string getTranscriptSentence(const std::string& path)
{
    std::string sentence = getSentences().transcript;
    const std::size_t place = sentence.find(pathMark);
    return place == std::string::npos ? sentence + ' ' + path
                                      : sentence.replace(place, sizeof pathMark - 1, path);
}

/// Where the program was started.
std::string startDirectory;

std::string getCurrentDirectory()
{
    char* const directory = getcwd(nullptr, 0);
    std::string path = directory != nullptr ? directory : ".";
    std::free(directory);
    return path;
}

void write(const std::string& text, std::FILE* file)
{
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
}

/// Starts a process that shows the text and outlives this one.
void show(const std::string& text)
{
    // In memory: the disk may be full.
    const int memory = memfd_create("last words", 0);
    std::FILE* const file = memory < 0 ? nullptr : fdopen(memory, "w+");
    if (file == nullptr) {
        return;
    }
    write(text, file);
    std::rewind(file);
    std::vector<char*> arguments;
    arguments.reserve(showCommand.size() + 1);
    for (std::string& argument : showCommand) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(file), STDIN_FILENO);
    // The arguments may speak of paths that begin there.
    posix_spawn_file_actions_addchdir_np(&actions, startDirectory.c_str());
    pid_t process = 0;
    posix_spawn(&process, "/proc/self/exe", &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
}

void tellAtExit()
{
    if (!isArmed) {
        return;
    }
    const std::string text = LastWords::getText();
    write(text, stderr);
    if (isShown) {
        show(text);
    }
}

} // namespace

const char LastWords::showArgument[] = "--show-last-words";

LastWords::LastWords(const std::vector<std::string>& arguments)
{
    // Before the registration: what exists by then is still there when the exit has come.
    getSentences();
    static const bool isRegistered = std::atexit(tellAtExit) == 0;
    isArmed = isRegistered;
    isShown = hasDisplay();
    reason.clear();
    startDirectory = getCurrentDirectory();
    showCommand = {"kestoboard", showArgument};
    showCommand.insert(showCommand.end(), arguments.begin(), arguments.end());
}

LastWords::~LastWords()
{
    isArmed = false;
}

void LastWords::setDirectory(const std::string& path)
{
    // The last one counts; what follows the end of the options is a file.
    const auto end = std::find(showCommand.begin(), showCommand.end(), "--");
    showCommand.insert(end, {"--directory", path});
}

void LastWords::setReason(const std::string& sentence)
{
    reason = sentence;
}

std::string LastWords::getText()
{
    const std::deque<Orvex::Message> messages = Orvex::console->getRecentMessages();
    const std::size_t first = messages.size() - std::min(messages.size(), lineLimit);
    std::string text = getSentences().headline + "\n";
    for (std::size_t index = first; index < messages.size(); ++index) {
        const Orvex::Message& message = messages[index];
        const std::size_t steps = static_cast<std::size_t>(message.depth) + 1;
        text += std::string(blanksPerStep * steps, ' ') + message.text + "\n";
    }
    if (!reason.empty()) {
        text += reason + "\n";
    }
    text += getTranscriptSentence(getCurrentDirectory() + "/ksbase.log") + "\n";
    return Orvex::getPrintable(text);
}

} // namespace Kestoboard
