#ifndef APP_LASTWORDS_H
#define APP_LASTWORDS_H

#include <string>

namespace Kestoboard
{

/// Tells on standard error why the program ended when it did not end by itself.
///
/// When the board tool ends, the engine says so on the console and ends the process, and the
/// console goes with the window. As long as an object of this class lives, an `exit` from
/// anywhere repeats the latest lines of the console and names the transcript. There is one at a
/// time; it needs `Orvex::console`, which outlives it.
class LastWords
{
public:
    LastWords();
    ~LastWords();
    LastWords(const LastWords&) = delete;
    LastWords& operator=(const LastWords&) = delete;

    /// What is told at the end, as it stands at the moment.
    static std::string getText();
};

} // namespace Kestoboard

#endif
