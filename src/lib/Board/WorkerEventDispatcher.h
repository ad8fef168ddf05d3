#ifndef BOARD_WORKEREVENTDISPATCHER_H
#define BOARD_WORKEREVENTDISPATCHER_H

#include <QAbstractEventDispatcher>
#include <QSemaphore>

namespace Board
{

/// The event dispatcher of the worker thread: it serves posted events, which are all that the
/// worker waits for. Timers and socket notifiers do not work on that thread.
///
/// The worker is started for each command, and each time a dispatcher is made for it. The toolkit's
/// own one watches files and timers as well, which made it a third of what a command cost.
class WorkerEventDispatcher : public QAbstractEventDispatcher
{
public:
    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;

    /// From any thread.
    /// @{
    void wakeUp() override;
    void interrupt() override;
    /// @}
    void flush() override {}

    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType timerType,
                       QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;

private:
    /// Holds something when there may be events that have not been served: from the start on, since
    /// events may have been posted before.
    QSemaphore wakes{1};
};

} // namespace Board

#endif
