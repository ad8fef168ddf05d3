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

std::string join(const std::string& message, const std::string& second)
{
    return second.empty() ? message : message + " (" + second + ")";
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
    print(toText(message), second);
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
    error(toText(message), second);
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

void Console::report(Level level, const std::string& text)
{
    Message message{level, 0, text, QDateTime::currentDateTime()};
    if (QThread::currentThread() == thread()) {
        add(std::move(message));
    } else {
        QMetaObject::invokeMethod(this, HandedWork([this, message] { add(message); }),
                                  Qt::QueuedConnection);
    }
}

void Console::add(Message message)
{
    message.depth = depth;
    recentMessages.push_back(message);
    if (recentMessages.size() > recentLimit) {
        recentMessages.pop_front();
    }
    emit messageAdded(message);
}

} // namespace Orvex
