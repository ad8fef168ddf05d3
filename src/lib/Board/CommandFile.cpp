#include <Board/CommandFile.h>

#include <foundation/Text.h>

#include <QTextStream>

namespace Board
{

bool readCommand(QTextStream* lines, std::string* command)
{
    while (!lines->atEnd()) {
        const std::string line = Orvex::getLabel(lines->readLine().simplified());
        if (!line.empty() && !Orvex::startsWith(line, "#")) {
            *command = line;
            return true;
        }
    }
    return false;
}

} // namespace Board
