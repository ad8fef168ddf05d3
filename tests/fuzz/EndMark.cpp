#include "Require.h"
#include "Targets.h"

#include <Board/ReplyBuffer.h>

#include <algorithm>
#include <cstring>

namespace Fuzz
{

namespace
{

bool isEnded(const std::string& text)
{
    return text.find("COMMAND SUCCEEDED") != std::string::npos ||
           text.find("COMMAND FAILED") != std::string::npos;
}

/// The lengths of the pieces, one a byte and in turn; 1 to 32.
std::vector<std::size_t> getLengths(const std::string& line)
{
    std::vector<std::size_t> lengths;
    for (const char character : line) {
        lengths.push_back(static_cast<unsigned char>(character) % 32 + 1U);
    }
    return lengths.empty() ? std::vector<std::size_t>{1} : lengths;
}

} // namespace

void endMark(const std::string& bytes)
{
    const std::size_t head = std::min(bytes.find('\n'), bytes.size());
    const std::vector<std::size_t> lengths = getLengths(bytes.substr(0, head));
    const std::string text = bytes.substr(std::min(head + 1, bytes.size()));

    Board::ReplyBuffer buffer;
    std::string model;
    std::size_t turn = 0;
    for (std::size_t at = 0; at < text.size(); at += lengths[turn++ % lengths.size()]) {
        const std::string piece = text.substr(at, lengths[turn % lengths.size()]);
        // A piece counts up to its first NUL.
        model += piece.c_str();
        require(buffer.add(QByteArray::fromStdString(piece)) == isEnded(model),
                "a reply is complete as soon as a mark stands in it");
    }
    require(buffer.take() == QString::fromLatin1(model.data(), static_cast<int>(model.size())),
            "a reply is all of its pieces");
    require(buffer.take().isEmpty() && !buffer.add({}), "a reply is taken once");

    if (std::strlen(text.c_str()) == text.size()) {
        require(buffer.add(QByteArray::fromStdString(text)) == isEnded(model),
                "the end does not depend on the pieces");
    }
}

} // namespace Fuzz
