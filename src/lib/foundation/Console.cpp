#include <foundation/Console.h>

#include <foundation/Exception.h>
#include <foundation/HandOff.h>

#include <QMetaObject>
#include <QThread>

#include <utility>

namespace Orvex
{

namespace
{

std::string join(std::string message, const std::string& second)
{
    if (!second.empty()) {
        message += " (" + second + ")";
    }
    return message;
}

std::string toText(const char* message)
{
    return message != nullptr ? message : "";
}

} // namespace

Console* console = nullptr;

Console::Console(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<Message>("Orvex::Message");
}

Console::~Console() = default;

void Console::print(const std::string& message, const std::string& second)
{
    report(Level::Normal, join(message, second));
}

void Console::print(const char* message, const std::string& second)
{
    report(Level::Normal, join(toText(message), second));
}

void Console::print(const Exception& failure)
{
    report(Level::Normal, failure.getMessage());
}

void Console::warning(const char* message, const std::string& second)
{
    report(Level::Warning, join(toText(message), second));
}

void Console::error(const std::string& message, const std::string& second)
{
    report(Level::Error, join(message, second));
}

void Console::error(const char* message, const std::string& second)
{
    report(Level::Error, join(toText(message), second));
}

void Console::error(const Exception& failure)
{
    report(Level::Error, failure.getMessage());
}

void Console::indent()
{
    ++depth;
}

void Console::unindent()
{
    if (depth > 0) {
        --depth;
    }
}

int Console::getDepth() const
{
    return depth;
}

std::deque<Message> Console::getRecentMessages() const
{
    return recentMessages;
}

void Console::report(Level level, std::string text)
{
    if (QThread::currentThread() == thread()) {
        add(Message{level, depth, std::move(text), getTime()});
        return;
    }
    Message message{level, 0, std::move(text), QDateTime::currentDateTime()};
    QMetaObject::invokeMethod(this, HandedWork([this, message = std::move(message)]() mutable {
                                  message.depth = depth;
                                  add(message);
                              }),
                              Qt::QueuedConnection);
}

/// Local time costs more than the rest of a message, and many messages come in one millisecond.
QDateTime Console::getTime()
{
    const qint64 moment = QDateTime::currentMSecsSinceEpoch();
    if (moment != latestMoment) {
        latestMoment = moment;
        latestTime = QDateTime::fromMSecsSinceEpoch(moment);
    }
    return latestTime;
}

void Console::add(const Message& message)
{
    if (recentMessages.size() < recentLimit) {
        recentMessages.push_back(message);
    } else {
        // The oldest gives its memory to the newest.
        Message kept = std::move(recentMessages.front());
        recentMessages.pop_front();
        kept = message;
        recentMessages.push_back(std::move(kept));
    }
    emit messageAdded(message);
}

} // namespace Orvex
