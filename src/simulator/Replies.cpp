#include "Replies.h"

#include <algorithm>

namespace Simulator
{

namespace
{

const std::string successMark = "COMMAND SUCCEEDED";
const std::string failureMark = "COMMAND FAILED";
constexpr std::size_t longestShown = 400;

void breakMark(std::string& text, const std::string& mark)
{
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
        text[at + mark.find(' ')] = '_';
    }
}

// Not inside a character of several bytes.
void shorten(std::string& text)
{
    if (text.size() <= longestShown) {
        return;
    }
    std::size_t end = longestShown;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    text.resize(end);
    text += "...";
}

} // namespace

std::string getSuccess(const std::string& lines)
{
    return lines + successMark + "\n";
}

std::string getFailure(const std::string& reason)
{
    return "Error: " + getShown(reason) + "\n" + failureMark + "\n";
}

std::string getShown(const std::string& text)
{
    std::string shown = text;
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
    };
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    breakMark(shown, successMark);
    breakMark(shown, failureMark);
    shorten(shown);
    return shown;
}

std::size_t getMarkOffset(const std::string& answer)
{
    if (answer.size() < 2) {
        return 0;
    }
    const std::size_t lineEnd = answer.rfind('\n', answer.size() - 2);
    return lineEnd == std::string::npos ? 0 : lineEnd + 1;
}

} // namespace Simulator
