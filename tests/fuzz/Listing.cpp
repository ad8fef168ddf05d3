#include "Require.h"
#include "Targets.h"

#include <Board/BoardListing.h>

#include <sstream>

namespace Fuzz
{

namespace
{

/// The words of a line, as the standard library finds them in the "C" locale.
std::vector<std::string> getWords(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

std::string join(const std::vector<std::string>& words, std::size_t first, std::size_t last)
{
    std::string text;
    for (std::size_t index = first; index < words.size() && index <= last; ++index) {
        text += (index == first ? "" : " ") + words[index];
    }
    return text;
}

std::vector<std::string> getLines(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

void listing(const std::string& bytes)
{
    const std::list<Board::ListedBoard> boards = Board::parseBoardListing(bytes);
    auto board = boards.begin();
    for (const std::string& line : getLines(bytes)) {
        const std::vector<std::string> words = getWords(line);
        const std::string all = join(words, 0, words.size());
        if (all.find("0x534B") == std::string::npos) {
            continue;
        }
        require(board != boards.end(), "every line with the marker is a board");
        require(board->name == join(words, 2, 7), "the name is the third to the eighth word");
        require(board->isSelected == (all.front() == '*'), "a star selects");
        ++board;
    }
    require(board == boards.end(), "no other line is a board");
}

} // namespace Fuzz
