#ifndef APP_TOOLWATCH_H
#define APP_TOOLWATCH_H

#include <QObject>
#include <QPointer>
#include <QProcess>

namespace Orvex
{
struct Message;
} // namespace Orvex

namespace Kestoboard
{

/// Notices the end of the board tool before the engine does, which then ends the program.
class ToolWatch : public QObject
{
    Q_OBJECT

public:
    explicit ToolWatch(QObject* parent = nullptr);

    /// Begins to watch the tool of the panel's window; does nothing when there is no window yet or
    /// the tool is watched already.
    void begin();

    /// How the tool ended, as a sentence; empty before its end.
    QString getVerdict() const;

    /// How a tool ended that had started, as a sentence; `code` is its status or the signal.
    static QString getEnd(QProcess::ExitStatus kind, int code);

signals:
    /// Emitted once; the program ends right after.
    void toolEnded();

private:
    void listen(const Orvex::Message& message);
    void tell();

    /// Null as long as there is no window, or no tool that has been started.
    QPointer<QProcess> process;
    bool hasTold = false;
};

} // namespace Kestoboard

#endif
