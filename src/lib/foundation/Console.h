#ifndef FOUNDATION_CONSOLE_H
#define FOUNDATION_CONSOLE_H

#include <foundation/Export.h>
#include <foundation/Message.h>

#include <QObject>

#include <deque>
#include <string>

namespace Orvex
{

class Exception;

/// The one sink of all that the program tells a person.
///
/// It shows nothing itself: whoever shows messages listens to messageAdded, and asks
/// getRecentMessages for what was said before it listened. It belongs to the thread that made it;
/// only what is marked so may be called from other threads.
///
/// The second string of the operations, when it is not empty, is shown after the message in
/// brackets: "message (second)".
class ORVEX_EXPORT Console : public QObject
{
    Q_OBJECT

public:
    /// How many messages are kept for those who begin to listen later.
    static constexpr std::size_t recentLimit = 1000;

    explicit Console(QObject* parent = nullptr);
    ~Console() override;

    /// From any thread: a call from another thread returns at once, and the message is added when
    /// the thread of the console next serves its events, at the depth of that moment. What is
    /// still on its way when the console is destroyed is dropped.
    /// @{
    void print(const std::string& message, const std::string& second);
    void print(const char* message, const std::string& second);
    void print(const Exception& failure);
    void warning(const char* message, const std::string& second);
    void error(const std::string& message, const std::string& second);
    void error(const char* message, const std::string& second);
    void error(const Exception& failure);
    /// @}

    /// The following messages stand one step further in.
    void indent();
    /// The following messages stand one step less far in; at the left margin nothing changes.
    void unindent();
    int getDepth() const;

    /// The latest messages, the oldest first.
    std::deque<Message> getRecentMessages() const;

signals:
    /// Emitted on the thread of the console, once for each message in the order of the messages.
    void messageAdded(const Orvex::Message& message);

private:
    void report(Level level, std::string text);
    QDateTime getTime();
    void add(const Message& message);

    int depth = 0;
    qint64 latestMoment = -1; // of latestTime, in milliseconds since 1970
    QDateTime latestTime;
    std::deque<Message> recentMessages;
};

/// Made and owned by the application, set before the first window is made and kept until the last
/// user of it has gone; nobody else creates, replaces or destroys it.
extern ORVEX_EXPORT Console* console;

} // namespace Orvex

#endif
