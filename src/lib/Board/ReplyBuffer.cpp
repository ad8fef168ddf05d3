#include <Board/ReplyBuffer.h>

#include <Board/EndMark.h>

#include <utility>

namespace Board
{

bool ReplyBuffer::add(const QByteArray& bytes)
{
    if (!bytes.isEmpty()) {
        text += QLatin1String(bytes.constData(), static_cast<int>(qstrlen(bytes.constData())));
    }
    const int mark = findEndMark(text, searchStart);
    // What has been searched need not be searched again, but for the beginning of a mark.
    searchStart = mark >= 0 ? mark : qMax(0, text.size() - longestEndMark + 1);
    if (givenUp && mark < 0) {
        giveUp();
    }
    return mark >= 0;
}

void ReplyBuffer::giveUp()
{
    text = text.right(longestEndMark - 1);
    searchStart = 0;
    givenUp = true;
}

QString ReplyBuffer::take()
{
    QString taken = std::move(text);
    clear();
    return taken;
}

void ReplyBuffer::clear()
{
    text = QString();
    searchStart = 0;
    givenUp = false;
}

} // namespace Board
