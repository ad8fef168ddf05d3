// A panel that goes into a state in which its tool ends, for the tests of that end: it writes what
// the console says to its standard output, a line each. The first argument is the number of the
// state; the scenario of the state is the file "armed.toml" in the working directory.

#include "Situation.h"
#include "Stage.h"
#include "support/TestApplication.h"

#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <QThread>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <thread>

namespace
{

const char armedFile[] = "armed.toml";
const char doneFile[] = "done";

void say(const QString& text)
{
    QTextStream(stdout) << text << '\n';
    std::fflush(stdout);
}

void tell(const Orvex::Message& message)
{
    const QString mark = message.level == Orvex::Level::Error ? QStringLiteral("E: ") : QString();
    say(mark + Orvex::getReadable(message.text));
    // A tool that does something at its start has done it before it is sent anything.
    if (message.text == "Kestoboard succesfully launched" &&
        qEnvironmentVariableIsSet("KESTOBOARD_TEST_WAITS")) {
        while (!QFile::exists(QLatin1String(doneFile))) {
            QThread::msleep(1);
        }
    }
}

void arm()
{
    if (QFile::exists(QLatin1String(armedFile))) {
        const QString scenario = qEnvironmentVariable("KESTOBOARD_SCENARIO");
        QFile::remove(scenario);
        QFile::rename(QLatin1String(armedFile), scenario);
    }
}

/// Goes through the state; then asks for something more, should the process still be there.
void pass(const Test::Situation& situation, Board::KSBaseHandler* engine)
{
    for (const QString& result : situation.perform(engine)) {
        say(result);
    }
    say(QStringLiteral("passed"));
    say(QString::fromStdString(engine->getMode()));
}

constexpr std::chrono::seconds threadPatience(30);

std::atomic<bool> isWorkerAtWork{false};
std::ptrdiff_t threadsAtStart = 0;

std::ptrdiff_t getThreadCount()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

/// Tells which threads are still there when the exit destroys what is older than this call.
void watchExit()
{
    // A sanitizer has a thread of its own, which it starts with the first of the program.
    std::thread([] {}).join();
    threadsAtStart = getThreadCount();
    std::atexit([] {
        std::puts(isWorkerAtWork ? "the worker is at work" : "the worker is at rest");
        // The system forgets a thread a moment after it has ended.
        QDeadlineTimer patience(threadPatience);
        while (getThreadCount() > threadsAtStart && !patience.hasExpired()) {
            QThread::msleep(1);
        }
        std::puts(getThreadCount() > threadsAtStart ? "threads are left" : "no thread is left");
        std::fflush(stdout);
    });
}

/// Ends while the worker is inside the signal of a reply.
void endInMidStep(Board::KSBaseHandler* engine)
{
    auto* const handler =
        Board::CommandHandler::create(Board::CommandHandler::CommandType::Control, "help", engine);
    QObject::connect(
        handler, &Board::CommandHandler::resultReady, handler,
        [] {
            isWorkerAtWork = true;
            QThread::msleep(300);
            isWorkerAtWork = false;
        },
        Qt::DirectConnection);
    while (!isWorkerAtWork) {
        QCoreApplication::processEvents();
    }
    engine->onProcessFinished();
}

/// Ends by an error of one pipe, with words in the others that nobody has read yet.
void endWithUnreadWords(Board::KSBaseHandler* engine)
{
    ::kill(static_cast<pid_t>(engine->findChild<QProcess*>()->processId()), SIGUSR1);
    while (!QFile::exists(QLatin1String(doneFile))) {
        QThread::msleep(1);
    }
    engine->onProcessFinished();
}

/// An idle panel whose tool does something of itself, and is asked something then.
void endWhenIdle(Board::KSBaseHandler* engine)
{
    ::kill(static_cast<pid_t>(engine->findChild<QProcess*>()->processId()), SIGUSR1);
    while (!QFile::exists(QLatin1String(doneFile))) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    if (qEnvironmentVariableIsSet("KESTOBOARD_TEST_ASKS")) {
        engine->getMode();
    }
    QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    Test::TestApplication application(argc, argv);
    QObject::connect(Orvex::console, &Orvex::Console::messageAdded, &application, tell);
    const QString part = application.arguments().value(1);
    if (part == QStringLiteral("mid-step")) {
        watchExit();
    }
    try {
        const Test::Stage stage;
        Board::KSBaseHandler* const engine = stage.getEngine();
        if (part == QStringLiteral("mid-step")) {
            endInMidStep(engine);
        } else if (part == QStringLiteral("unread")) {
            endWithUnreadWords(engine);
        } else if (part == QStringLiteral("idle")) {
            endWhenIdle(engine);
        } else if (part == QStringLiteral("stay")) {
            return QCoreApplication::exec();
        } else {
            arm();
            const Test::Situation situation(nullptr, static_cast<Test::State>(part.toInt()));
            situation.approach(engine);
            pass(situation, engine);
        }
    } catch (const Orvex::Exception& failure) {
        say(QStringLiteral("exception: ") + Orvex::getReadable(failure.getMessage()));
    }
    return 2;
}
