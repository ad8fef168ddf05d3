// A panel under load until its tool ends: it writes what the console says to its standard output,
// a line each. Its argument is the seed of the load.

#include "faults/Load.h"
#include "support/Panel.h"
#include "support/TestApplication.h"

#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QThread>

#include <cstdio>

namespace
{

void say(const Orvex::Message& message)
{
    const char* const mark = message.level == Orvex::Level::Error ? "E: " : "";
    std::printf("%s%s\n", mark, Orvex::getReadable(message.text).toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    Test::TestApplication application(argc, argv);
    QObject::connect(Orvex::console, &Orvex::Console::messageAdded, &application, say);
    try {
        const Test::Panel panel;
        panel.getWindow()->show();
        Test::Load load(panel, QCoreApplication::arguments().value(1).toUInt());
        // What happens while the window is busy is met all at once.
        for (int share = 0; share < 4; ++share) {
            load.addAction([] { QThread::msleep(5); });
        }
        load.start();
        return QCoreApplication::exec();
    } catch (const Orvex::Exception& failure) {
        std::printf("exception: %s\n", failure.getMessage().c_str());
    }
    return 2;
}
