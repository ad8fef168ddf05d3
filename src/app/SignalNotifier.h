#ifndef APP_SIGNALNOTIFIER_H
#define APP_SIGNALNOTIFIER_H

#include <QObject>

namespace Kestoboard
{

/// Turns the signals that ask the process to end (interrupt, termination, hangup) into a Qt signal
/// on the GUI thread. There is one in the process.
class SignalNotifier : public QObject
{
    Q_OBJECT

public:
    explicit SignalNotifier(QObject* parent = nullptr);
    ~SignalNotifier() override;

    /// Such a signal has come, be it announced already or not.
    static bool hasReceived();

signals:
    void received();

private slots:
    void read();

private:
    int readEnd;
};

} // namespace Kestoboard

#endif
