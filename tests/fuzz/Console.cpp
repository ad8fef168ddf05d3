#include "Require.h"
#include "Targets.h"

#include <application/ConsoleWidget.h>
#include <foundation/Console.h>
#include <foundation/PlainText.h>

#include <QCoreApplication>

#include <sstream>

namespace Fuzz
{

namespace
{

/// The first byte of a line says how its message is told; the rest is the message.
void tell(const std::string& line)
{
    const unsigned char kind = line.empty() ? 0 : static_cast<unsigned char>(line.front());
    const std::string text = line.empty() ? line : line.substr(1);
    switch (kind % 8) {
    case 0:
        Orvex::console->error(text, "");
        break;
    case 1:
        Orvex::console->warning(text.c_str(), "");
        break;
    case 2:
        Orvex::console->indent();
        break;
    case 3:
        Orvex::console->unindent();
        break;
    case 4:
        // A message of several lines.
        Orvex::console->print(text + "\n" + text + "\r\n", "");
        break;
    default:
        Orvex::console->print(text, "");
        break;
    }
}

bool isShowable(const QString& text)
{
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (Orvex::getVisible(line) != line) {
            return false;
        }
    }
    return true;
}

} // namespace

void console(const std::string& bytes)
{
    while (Orvex::console->getDepth() > 0) {
        Orvex::console->unindent();
    }
    static auto* const widget = [] {
        auto* const made = new Zandu::ConsoleWidget(nullptr);
        made->resize(600, 300);
        made->show();
        return made;
    }();
    widget->clear();
    std::istringstream stream(bytes);
    for (std::string line; std::getline(stream, line);) {
        tell(line);
    }
    widget->selectAll();
    QCoreApplication::processEvents();
    widget->findNext();
    require(isShowable(widget->getText()), "only what can be shown is shown");
    widget->clear();
    require(widget->getText().isEmpty(), "what is cleared is gone");
}

} // namespace Fuzz
