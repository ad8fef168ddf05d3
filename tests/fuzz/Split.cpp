#include "Require.h"
#include "Targets.h"

#include <foundation/ForEachControler.h>
#include <foundation/Text.h>

#include <algorithm>

namespace Fuzz
{

void split(const std::string& bytes)
{
    const std::size_t head = std::min(bytes.find('\n'), bytes.size());
    const std::string separator = bytes.substr(0, head);
    const std::string text = bytes.substr(std::min(head + 1, bytes.size()));
    const Orvex::Collection<std::string> pieces = Orvex::getSplitted(text, separator);

    std::vector<std::string> all;
    std::string joined;
    std::string piece;
    for (Orvex::ForEachControler<std::string> loop(piece, pieces); loop.next();) {
        require(separator.empty() || piece.find(separator) == std::string::npos,
                "no piece holds the separator");
        joined += (all.empty() ? std::string() : separator) + piece;
        all.push_back(piece);
    }
    require(joined == text, "the pieces make the text");
    require(pieces.getCount() == all.size() && !all.empty(), "there is a piece at least");

    std::string first;
    std::string second;
    require(pieces.match(first) == (all.size() == 1) && first == all[0], "one piece matches one");
    require(pieces.match(first, second) == (all.size() == 2), "two pieces match two");
    require(second == (all.size() > 1 ? all[1] : std::string()), "the second is the second");
    require(pieces.getLast() == all.back(), "the last is the last");
}

} // namespace Fuzz
