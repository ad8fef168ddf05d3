#include "Require.h"
#include "Targets.h"

#include <Board/CommandFile.h>

#include <QByteArray>
#include <QTextStream>

namespace Fuzz
{

void commandFile(const std::string& bytes)
{
    const QByteArray content = QByteArray::fromStdString(bytes);
    QTextStream lines(content);
    std::string command;
    while (Board::readCommand(&lines, &command)) {
        require(!command.empty() && command.front() != '#',
                "blank lines and comments are no commands");
        require(command.find('\n') == std::string::npos && command.find('\r') == std::string::npos,
                "a line is one command");
        const QString text = QString::fromStdString(command);
        require(text.simplified() == text, "a command is simplified");
    }
    require(lines.atEnd(), "the file is read to its end");
}

} // namespace Fuzz
