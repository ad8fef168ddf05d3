// What the design of the engine costs by itself: a worker thread that is started and ended for each
// command, and calls from it to the thread of the window that it waits for.
//
// Usage: worker_costs COUNT
#include "Arguments.h"
#include "Figures.h"
#include "Require.h"
#include "Stopwatch.h"

#include <Board/WorkerEventDispatcher.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

namespace
{

enum class Dispatcher {
    Toolkits,
    Engines,
};

/// Microseconds for a thread that is started, ends at once, and is waited for.
double measureThread(long count, Dispatcher dispatcher)
{
    QThread thread;
    QObject scheduler;
    scheduler.moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, &scheduler, [&thread] { thread.quit(); });
    const Bench::Stopwatch watch;
    for (long number = 0; number < count; ++number) {
        if (dispatcher == Dispatcher::Engines) {
            thread.setEventDispatcher(new Board::WorkerEventDispatcher);
        }
        thread.start();
        thread.wait();
    }
    return watch.getMicroseconds() / static_cast<double>(count);
}

/// Microseconds for a call to a thread that serves its events, until it has come back.
double measureHop(long count)
{
    QEventLoop loop;
    QThread thread;
    QObject scheduler;
    scheduler.moveToThread(&thread);
    long served = 0;
    double microseconds = 0;
    QObject::connect(&thread, &QThread::started, &scheduler, [&] {
        const Bench::Stopwatch watch;
        for (long number = 0; number < count; ++number) {
            QMetaObject::invokeMethod(
                &loop, [&served] { ++served; }, Qt::BlockingQueuedConnection);
        }
        microseconds = watch.getMicroseconds();
        thread.quit();
    });
    QObject::connect(&thread, &QThread::finished, &loop, &QEventLoop::quit);
    thread.start();
    loop.exec();
    thread.wait();
    Bench::require(served == count, "each call is served");
    return microseconds / static_cast<double>(count);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const Bench::Arguments arguments(argc, argv, 1);
    const long count = arguments.getNumber(0);
    Bench::Figures()
        .add("thread_us", measureThread(count, Dispatcher::Engines))
        .add("toolkit_thread_us", measureThread(count, Dispatcher::Toolkits))
        .add("hop_us", measureHop(count))
        .print();
}
