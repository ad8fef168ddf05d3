// Two threads that touch the same data: "handed" in an order that is announced, "unordered" in
// none. The thread sanitizer has to be silent about the first and to report the second.

#include <foundation/HandOff.h>

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <memory>
#include <string>

namespace
{

/// The worker fills a text and posts it; the main thread reads it and changes it.
void passInOrder()
{
    std::string text;
    int rounds = 0;
    const std::unique_ptr<QThread> worker(QThread::create([&text, &rounds] {
        for (int round = 0; round < 100; ++round) {
            text = "from the worker";
            QMetaObject::invokeMethod(qApp,
                                      Orvex::HandedWork(
                                          [&text, &rounds] {
                                              text += ", seen";
                                              ++rounds;
                                          },
                                          &text),
                                      Qt::BlockingQueuedConnection);
            Orvex::takeOver(&text);
        }
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }));
    worker->start();
    QCoreApplication::exec();
    worker->wait();
    std::printf("%d rounds\n", rounds);
}

int sharedCount = 0;

class CountingThread : public QThread
{
protected:
    void run() override { ++sharedCount; }
};

/// Nothing says which of the two counts first.
void countTwice()
{
    CountingThread worker;
    worker.start();
    ++sharedCount;
    worker.wait();
    std::printf("%d counts\n", sharedCount);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains(QStringLiteral("handed"))) {
        passInOrder();
    } else {
        countTwice();
    }
    return 0;
}
