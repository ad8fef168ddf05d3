#ifndef APP_CONSOLEPRINTER_H
#define APP_CONSOLEPRINTER_H

#include <QObject>
#include <QStringList>

namespace Orvex
{
struct Message;
} // namespace Orvex

namespace Kestoboard
{

/// Writes what the console says to standard output as well, as it comes.
class ConsolePrinter : public QObject
{
    Q_OBJECT

public:
    /// Listens to the Orvex::console of this moment.
    explicit ConsolePrinter(QObject* parent = nullptr);

    /// Whether a message of exactly that text has come.
    bool hasSeen(const QString& text) const { return texts.contains(text); }

private:
    void print(const Orvex::Message& message);

    QStringList texts;
};

} // namespace Kestoboard

#endif
