#include "Words.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace Simulator
{

std::vector<std::string> getWords(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

std::string joinWords(const std::vector<std::string>& words, std::size_t first, std::size_t count)
{
    std::string joined;
    const std::size_t end = first + std::min(count, words.size() - std::min(first, words.size()));
    for (std::size_t i = first; i < end; ++i) {
        joined += (i == first ? "" : " ") + words[i];
    }
    return joined;
}

} // namespace Simulator
