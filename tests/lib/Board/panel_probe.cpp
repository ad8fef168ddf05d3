// A panel for tests that end with the process: it writes what the console says to its standard
// output, a line each, and sends the commands that it is given, one after the other.

#include "support/Panel.h"
#include "support/TestApplication.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace
{

void say(const QString& text)
{
    QTextStream(stdout) << text << '\n';
    std::fflush(stdout);
}

QString getMark(Orvex::Level level)
{
    return level == Orvex::Level::Error ? QStringLiteral("E: ") : QString();
}

} // namespace

int main(int argc, char** argv)
{
    Test::TestApplication application(argc, argv);
    QObject::connect(Orvex::console, &Orvex::Console::messageAdded, &application,
                     [](const Orvex::Message& message) {
                         say(getMark(message.level) + Orvex::getReadable(message.text));
                     });
    try {
        const Test::Panel panel;
        QStringList commands = QCoreApplication::arguments().mid(1);
        for (const QString& command : commands) {
            const std::string reply = panel.run(Test::CommandType::Control, command.toStdString());
            say(QStringLiteral("reply: ") + Orvex::getReadable(reply));
        }
        say(QStringLiteral("all sent"));
        return QCoreApplication::exec();
    } catch (const Orvex::Exception& failure) {
        say(QStringLiteral("exception: ") + Orvex::getReadable(failure.getMessage()));
    }
    return 2;
}
