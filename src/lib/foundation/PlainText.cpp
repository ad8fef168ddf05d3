#include <foundation/PlainText.h>

#include <QTextDocument>

#include <algorithm>
#include <cstdio>

namespace Orvex
{

namespace
{

bool isInvisible(char32_t code)
{
    return (code < 0x20 && code != '\t') || (code >= 0x7f && code < 0xa0) ||
           (code >= 0x2028 && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069) ||
           (code >= 0xfdd0 && code <= 0xfdef) || code == 0xfeff || code == 0xfffc ||
           code == 0xfffe || code == 0xffff;
}

std::string getSign(char32_t code)
{
    char sign[16];
    std::snprintf(sign, sizeof sign, code < 0x100 ? "\\x%02x" : "\\u%04x",
                  static_cast<unsigned>(code));
    return sign;
}

/// A character of UTF-8: what it is, and the number of its bytes, 0 where no character begins.
struct Character {
    char32_t code = 0;
    std::size_t length = 0;
};

Character decode(const std::string& text, std::size_t at)
{
    const auto byteAt = [&text](std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    };
    const unsigned char first = byteAt(at);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() - at < length) {
        return {};
    }
    char32_t code = first & (0x7fU >> length);
    for (std::size_t index = at + 1; index < at + length; ++index) {
        if ((byteAt(index) & 0xc0) != 0x80) {
            return {};
        }
        code = (code << 6) | (byteAt(index) & 0x3fU);
    }
    const bool isTooLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool isSurrogate = code >= 0xd800 && code < 0xe000;
    return isTooLong || isSurrogate || code > 0x10ffff ? Character{} : Character{code, length};
}

/// Whether a carriage return only belongs to the end of its line.
bool isLineEnd(const std::string& text, std::size_t at)
{
    return text[at] == '\r' && (at + 1 == text.size() || text[at + 1] == '\n');
}

} // namespace

bool isOneLine(const QString& text)
{
    return std::none_of(text.cbegin(), text.cend(), [](QChar character) {
        return character == QLatin1Char('\n') || character == QLatin1Char('\r') ||
               character.isNull();
    });
}

QString getVisible(const QString& text)
{
    const auto isHidden = [](QChar character) { return isInvisible(character.unicode()); };
    if (std::none_of(text.cbegin(), text.cend(), isHidden)) {
        return text;
    }
    QString visible;
    visible.reserve(text.size() + text.size() / 2);
    for (const QChar character : text) {
        if (isHidden(character)) {
            visible += QString::fromStdString(getSign(character.unicode()));
        } else {
            visible += character;
        }
    }
    return visible;
}

std::string getPrintable(const std::string& text)
{
    std::string printable;
    printable.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = decode(text, at);
        if (character.length == 0) {
            printable += getSign(static_cast<unsigned char>(text[at]));
        } else if (character.code == '\n' || !isInvisible(character.code)) {
            printable.append(text, at, character.length);
        } else if (!isLineEnd(text, at)) {
            printable += getSign(character.code);
        }
        at += std::max<std::size_t>(character.length, 1);
    }
    return printable;
}

QString getLiteral(const QString& text)
{
    return Qt::mightBeRichText(text)
               ? QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>")
               : text;
}

} // namespace Orvex
