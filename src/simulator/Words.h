#ifndef SIMULATOR_WORDS_H
#define SIMULATOR_WORDS_H

#include <cstddef>
#include <string>
#include <vector>

namespace Simulator
{

/// The words of `text`, which stand between blanks and tabs.
std::vector<std::string> getWords(const std::string& text);

/// `count` words from position `first` on, joined by single blanks; fewer when there are fewer.
std::string joinWords(const std::vector<std::string>& words, std::size_t first, std::size_t count);

} // namespace Simulator

#endif
