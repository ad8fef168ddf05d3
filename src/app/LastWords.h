#ifndef APP_LASTWORDS_H
#define APP_LASTWORDS_H

#include <QCoreApplication>

#include <string>
#include <vector>

namespace Kestoboard
{

/// Tells why the program ended when it did not end by itself.
///
/// When the board tool ends, the engine says so on the console and ends the process, and the
/// console goes with the window. As long as an object of this class lives, an `exit` from
/// anywhere repeats the latest lines of the console on standard error and names the transcript;
/// where there is a display, a process of its own shows them as well. There is one at a time; it
/// needs `Orvex::console`, which outlives it.
class LastWords
{
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::LastWords)

public:
    /// The argument by which the program is asked to show last words that it reads from standard
    /// input. The arguments of the program that has ended follow it.
    static const char showArgument[];

    /// `arguments` are those of the program, without its name.
    explicit LastWords(const std::vector<std::string>& arguments = {});
    ~LastWords();
    LastWords(const LastWords&) = delete;
    LastWords& operator=(const LastWords&) = delete;

    /// Says where the panel works when its arguments do not: it is to be started there again.
    static void setDirectory(const std::string& path);

    /// Says how the board tool ended, for the lines below those of the console.
    static void setReason(const std::string& sentence);

    /// What is told at the end, as it stands at the moment.
    static std::string getText();
};

} // namespace Kestoboard

#endif
