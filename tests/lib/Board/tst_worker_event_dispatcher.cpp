#include <Board/WorkerEventDispatcher.h>
#include <foundation/HandOff.h>

#include <QEventLoop>
#include <QSemaphore>
#include <QThread>
#include <QtTest>

#include <memory>

namespace
{

/// A thread with the dispatcher, and an object that lives on it.
class Worker
{
public:
    Worker()
        : object(new QObject)
    {
        object->moveToThread(&thread);
        QObject::connect(&thread, &QThread::finished, object, &QObject::deleteLater);
    }
    ~Worker()
    {
        thread.quit();
        thread.wait();
    }

    void start()
    {
        thread.setEventDispatcher(new Board::WorkerEventDispatcher);
        thread.start();
    }

    QThread thread;
    /// Ends with the thread.
    QObject* const object;
};

template <class Work>
void post(QObject* object, Work work)
{
    QMetaObject::invokeMethod(object, Orvex::HandedWork(work), Qt::QueuedConnection);
}

void release(QSemaphore* semaphore)
{
    Orvex::handOver(semaphore);
    semaphore->release();
}

void acquire(QSemaphore* semaphore, int count = 1)
{
    semaphore->acquire(count);
    Orvex::takeOver(semaphore);
}

} // namespace

class WorkerEventDispatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void postedEventsAreServedInTheirOrder();
    void whatWasPostedBeforeTheStartIsServed();
    void aQuitBeforeTheLoopRunsIsKept();
    void aQuitFromAnotherThreadEndsANestedLoop();
    void aThreadCanBeStartedAgain();
    void aLoopThatDoesNotWaitReturns();
};

void WorkerEventDispatcherTest::postedEventsAreServedInTheirOrder()
{
    const int count = 1000;
    Worker worker;
    worker.start();
    QVector<int> served;
    QSemaphore allServed;
    for (int number = 0; number < count; ++number) {
        post(worker.object, [&, number] {
            served += number;
            release(&allServed);
        });
    }
    acquire(&allServed, count);
    for (int number = 0; number < count; ++number) {
        QCOMPARE(served.at(number), number);
    }
}

void WorkerEventDispatcherTest::whatWasPostedBeforeTheStartIsServed()
{
    Worker worker;
    QSemaphore served;
    QThread* servedOn = nullptr;
    post(worker.object, [&] {
        servedOn = QThread::currentThread();
        release(&served);
    });
    worker.start();
    acquire(&served);
    QCOMPARE(servedOn, &worker.thread);
}

void WorkerEventDispatcherTest::aQuitBeforeTheLoopRunsIsKept()
{
    Worker worker;
    worker.start();
    QSemaphore isOver;
    post(worker.object, [&] {
        QEventLoop loop;
        post(&loop, [&loop] { loop.quit(); });
        loop.exec();
        release(&isOver);
    });
    acquire(&isOver);
}

void WorkerEventDispatcherTest::aQuitFromAnotherThreadEndsANestedLoop()
{
    const int count = 500;
    Worker worker;
    worker.start();
    for (int number = 0; number < count; ++number) {
        QEventLoop* waiting = nullptr;
        QSemaphore hasLoop;
        QSemaphore isOver;
        post(worker.object, [&] {
            QEventLoop loop;
            waiting = &loop;
            release(&hasLoop);
            loop.exec();
            release(&isOver);
        });
        acquire(&hasLoop);
        post(waiting, [waiting] { waiting->quit(); });
        acquire(&isOver);
    }
}

void WorkerEventDispatcherTest::aThreadCanBeStartedAgain()
{
    QThread thread;
    QObject object;
    object.moveToThread(&thread);
    for (int start = 0; start < 200; ++start) {
        thread.setEventDispatcher(new Board::WorkerEventDispatcher);
        thread.start();
        QSemaphore served;
        post(&object, [&] {
            release(&served);
            thread.quit();
        });
        acquire(&served);
        thread.wait();
        QVERIFY(thread.eventDispatcher() == nullptr);
    }
}

void WorkerEventDispatcherTest::aLoopThatDoesNotWaitReturns()
{
    Worker worker;
    worker.start();
    QSemaphore isOver;
    bool wasServed = false;
    post(worker.object, [&] {
        QEventLoop loop;
        loop.processEvents();
        post(&loop, [&] { wasServed = true; });
        loop.processEvents();
        release(&isOver);
    });
    acquire(&isOver);
    QVERIFY(wasServed);
}

QTEST_GUILESS_MAIN(WorkerEventDispatcherTest)

#include "tst_worker_event_dispatcher.moc"
