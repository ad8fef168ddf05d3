#include <foundation/Encoding.h>

#include <QTextCodec>

#include <utility>

namespace Orvex
{

QString fromAscii(const std::string& bytes)
{
    return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}

std::string toAscii(const QString& text)
{
    return text.toLatin1().toStdString();
}

std::string toAscii(QString&& text)
{
    // Converted in place. The half that this leaves unused goes back before the bytes are copied.
    QByteArray bytes = std::move(text).toLatin1();
    bytes.squeeze();
    return bytes.toStdString();
}

QString getReadable(const std::string& bytes)
{
    // The state also tells of a sequence that is cut off at the end.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    // To find a codec costs more than to read a line with it.
    static const QTextCodec* const codec = QTextCodec::codecForName("UTF-8");
    const QString text = codec->toUnicode(bytes.data(), static_cast<int>(bytes.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? text : fromAscii(bytes);
}

} // namespace Orvex
