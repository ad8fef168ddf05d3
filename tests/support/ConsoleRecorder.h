#ifndef SUPPORT_CONSOLERECORDER_H
#define SUPPORT_CONSOLERECORDER_H

#include <foundation/Console.h>
#include <foundation/Message.h>

#include <QObject>
#include <QStringList>
#include <QVector>

namespace Test
{

/// Records what is printed on the console from its construction on.
class ConsoleRecorder : public QObject
{
    Q_OBJECT

public:
    ConsoleRecorder();

    const QVector<Orvex::Message>& getMessages() const { return messages; }
    /// The texts, readable, each led by its mark and depth: "  text" at depth 1, "E: text" for an
    /// error, "W: text" for a warning. Two blanks a step.
    QStringList getLines() const;
    /// The lines, which are then forgotten.
    QStringList takeLines();
    bool contains(const QString& line) const { return getLines().contains(line); }
    void clear() { messages.clear(); }

private:
    QVector<Orvex::Message> messages;
};

} // namespace Test

#endif
