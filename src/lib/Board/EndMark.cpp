#include <Board/EndMark.h>

namespace Board
{

namespace
{

// Both marks begin with the same word: one pass finds either.
const QLatin1String commonPart("COMMAND ");
const QLatin1String success("SUCCEEDED");
const QLatin1String failure("FAILED");

} // namespace

const int longestEndMark = commonPart.size() + success.size();

int findEndMark(const QString& text, int from)
{
    for (int at = text.indexOf(commonPart, from); at >= 0; at = text.indexOf(commonPart, at + 1)) {
        const QStringRef verdict = text.midRef(at + commonPart.size(), success.size());
        if (verdict.startsWith(success) || verdict.startsWith(failure)) {
            return at;
        }
    }
    return -1;
}

} // namespace Board
