#include <Board/WorkerEventDispatcher.h>

#include <QCoreApplication>
#include <QtDebug>

namespace Board
{

bool WorkerEventDispatcher::processEvents(QEventLoop::ProcessEventsFlags flags)
{
    if ((flags & QEventLoop::WaitForMoreEvents) != 0) {
        emit aboutToBlock();
        wakes.acquire();
        emit awake();
    }
    // All that were posted by now are served below.
    wakes.tryAcquire(wakes.available());
    QCoreApplication::sendPostedEvents();
    return true;
}

bool WorkerEventDispatcher::hasPendingEvents()
{
    return wakes.available() > 0;
}

void WorkerEventDispatcher::wakeUp()
{
    wakes.release();
}

void WorkerEventDispatcher::interrupt()
{
    wakes.release();
}

void WorkerEventDispatcher::registerSocketNotifier(QSocketNotifier* /*notifier*/)
{
    qWarning("The worker of the engine serves no socket notifiers");
}

void WorkerEventDispatcher::unregisterSocketNotifier(QSocketNotifier* /*notifier*/) {}

void WorkerEventDispatcher::registerTimer(int /*timerId*/, int /*interval*/,
                                          Qt::TimerType /*timerType*/, QObject* /*object*/)
{
    qWarning("The worker of the engine serves no timers");
}

bool WorkerEventDispatcher::unregisterTimer(int /*timerId*/)
{
    return false;
}

bool WorkerEventDispatcher::unregisterTimers(QObject* /*object*/)
{
    return false;
}

QList<QAbstractEventDispatcher::TimerInfo>
WorkerEventDispatcher::registeredTimers(QObject* /*object*/) const
{
    return {};
}

int WorkerEventDispatcher::remainingTime(int /*timerId*/)
{
    return -1;
}

} // namespace Board
