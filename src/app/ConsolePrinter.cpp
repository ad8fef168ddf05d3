#include "app/ConsolePrinter.h"

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
    texts += Orvex::getReadable(message.text);
    const std::string line =
        std::string(static_cast<std::size_t>(message.depth * blanksPerStep), ' ') + message.text;
    std::puts(line.c_str());
    std::fflush(stdout);
}

} // namespace Kestoboard
