#include "Require.h"
#include "Targets.h"

#include <foundation/PlainText.h>

#include <QTextCodec>

namespace Fuzz
{

void terminal(const std::string& bytes)
{
    const std::string printable = Orvex::getPrintable(bytes);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(
        printable.data(), static_cast<int>(printable.size()), &state);
    require(state.invalidChars == 0 && state.remainingChars == 0, "what is printed is UTF-8");
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        require(Orvex::getVisible(line) == line, "nothing that is printed acts on the terminal");
    }
    require(Orvex::getPrintable(printable) == printable, "what can be printed stays");
}

} // namespace Fuzz
