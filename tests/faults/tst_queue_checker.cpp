// The checker of the storm is itself checked: it finds each way in which an order can be wrong.

#include "faults/QueueChecker.h"

#include <QtTest>

using Test::QueueChecker;

class TestQueueChecker : public QObject
{
    Q_OBJECT

private slots:
    void anOrderIsJudgedByTypeThenByArrival_data();
    void anOrderIsJudgedByTypeThenByArrival();
};

void TestQueueChecker::anOrderIsJudgedByTypeThenByArrival_data()
{
    // An arrival is "type text choice".
    QTest::addColumn<QStringList>("arrivals");
    QTest::addColumn<QStringList>("served");
    QTest::addColumn<QString>("complaint");
    const QStringList burst{"4 m 0", "1 c 0", "3 r 0", "1 d 0", "2 t 0"};

    QTest::newRow("right") << burst << QStringList{"c", "d", "t", "r", "m"} << "";
    QTest::newRow("first come is not served first")
        << burst << QStringList{"d", "c", "t", "r", "m"}
        << "Choice 0: 'd' (arrival 3, type 1) went ahead of 'c' (arrival 1, type 1)";
    QTest::newRow("a lower type waits")
        << burst << QStringList{"c", "d", "r", "t", "m"}
        << "Choice 2: 'r' (arrival 2, type 3) went ahead of 't' (arrival 4, type 2)";
    QTest::newRow("served twice") << burst << QStringList{"c", "c", "d", "t", "r", "m"}
                                  << "Choice 1: 'c' was not waiting";
    QTest::newRow("never served") << burst << QStringList{"c", "d", "t", "r"}
                                  << "'m' (arrival 0, type 4) was never served";
    QTest::newRow("unknown") << burst << QStringList{"x"} << "Choice 0: 'x' was not waiting";
    QTest::newRow("served before it came") << QStringList{"1 a 0", "1 b 3"} << QStringList{"a", "b"}
                                           << "Choice 1: 'b' (arrival 1, type 1) had not come";
    QTest::newRow("what came in time goes ahead")
        << QStringList{"4 m 0", "4 n 0", "1 late 1"} << QStringList{"m", "n", "late"}
        << "Choice 1: 'n' (arrival 1, type 4) went ahead of 'late' (arrival 2, type 1)";
    QTest::newRow("what came too late does not")
        << QStringList{"4 m 0", "4 n 0", "1 late 2"} << QStringList{"m", "n", "late"} << "";
    QTest::newRow("what came at the moment of the choice may")
        << QStringList{"4 m 0", "4 n 0", "1 late 2"} << QStringList{"m", "late", "n"} << "";
    QTest::newRow("the same text twice")
        << QStringList{"3 list 0", "3 list 1"} << QStringList{"list", "list"} << "";
}

void TestQueueChecker::anOrderIsJudgedByTypeThenByArrival()
{
    QFETCH(QStringList, arrivals);
    QFETCH(QStringList, served);
    QueueChecker checker;
    for (const QString& arrival : arrivals) {
        const QStringList words = arrival.split(' ');
        checker.arrive(words[0].toInt(), words[1], words[2].toInt());
    }
    QCOMPARE(checker.getArrivalCount(), std::size_t(arrivals.size()));
    QTEST(checker.check(served), "complaint");
}

QTEST_APPLESS_MAIN(TestQueueChecker)
#include "tst_queue_checker.moc"
