#include "app/ConsolePrinter.h"

#include "app/StartFailure.h"

#include <foundation/Console.h>
#include <foundation/Encoding.h>

#include <cstdio>

namespace Kestoboard
{

namespace
{

const int blanksPerStep = 4;

} // namespace

ConsolePrinter::ConsolePrinter(QObject* parent)
    : QObject(parent)
{
    connect(Orvex::console, &Orvex::Console::messageAdded, this, &ConsolePrinter::print);
}

void ConsolePrinter::print(const Orvex::Message& message)
{
    const QString text = Orvex::getReadable(message.text);
    texts += text;
    const QString indent(message.depth * blanksPerStep, QLatin1Char(' '));
    std::puts(getTerminalText(indent + text).constData());
    std::fflush(stdout);
}

} // namespace Kestoboard
