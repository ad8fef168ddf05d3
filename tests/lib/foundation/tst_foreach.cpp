#include "CountedCollection.h"
#include "Walk.h"

#include <foundation/ForEachControler.h>
#include <foundation/ListCollection.h>
#include <foundation/MapCollection.h>
#include <foundation/Text.h>

#include <QTest>
#include <QThread>

#include <map>
#include <memory>

using namespace Orvex;

namespace
{

class Board;
using Boards = std::map<std::string, Board*>;

/// Takes itself out of the map when it is destroyed.
class Board
{
public:
    Board(const std::string& boardName, Boards& registry)
        : name(boardName)
        , boards(registry)
    {
        boards.emplace(name, this);
    }
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;
    ~Board() { boards.erase(name); }

    const std::string name;

private:
    Boards& boards;
};

QString findFirst(const Collection<std::string>& collection)
{
    std::string item;
    for (ForEachControler<std::string> loop(item, collection); loop.next();) {
        return QString::fromStdString(item);
    }
    return QString();
}

} // namespace

class ForEachTest : public QObject
{
    Q_OBJECT

private slots:
    void aLoopVisitsEachElementInOrder();
    void aLoopOverNothingRunsNoBody_data();
    void aLoopOverNothingRunsNoBody();
    void aBodyMayDestroyItsElement();
    void theWalkHasMovedOnWhenTheBodyRuns();
    void theCollectionIsCopiedOnceAndLetGo();
    void theLoopKeepsNothingAfterItsEnd();
    void aBodyMayLeaveTheLoopEarly();
    void theFlagTellsOfALoopInProgress();
    void theFlagsOfTwoThreadsAreTheirOwn();
    void loopsNest();
    void aLongWalkNeitherClonesNorReadsTwice();
};

void ForEachTest::aLoopVisitsEachElementInOrder()
{
    const std::list<std::string> texts{"a", "b", "c"};
    QStringList visited;
    std::string item;
    for (ForEachControler<std::string> loop(item, ListCollection<std::string>(texts));
         loop.next();) {
        visited << QString::fromStdString(item);
    }
    QCOMPARE(visited, (QStringList{"a", "b", "c"}));
}

void ForEachTest::aLoopOverNothingRunsNoBody_data()
{
    QTest::addColumn<bool>("null");
    QTest::newRow("null handle") << true;
    QTest::newRow("empty list") << false;
}

void ForEachTest::aLoopOverNothingRunsNoBody()
{
    QFETCH(bool, null);
    const std::list<std::string> empty;
    const Collection<std::string> collection =
        null ? Collection<std::string>() : ListCollection<std::string>(empty);
    std::string item("untouched");
    int bodies = 0;
    for (ForEachControler<std::string> loop(item, collection); loop.next();) {
        ++bodies;
    }
    QCOMPARE(bodies, 0);
    QCOMPARE(item, std::string("untouched"));
}

void ForEachTest::aBodyMayDestroyItsElement()
{
    Boards boards;
    for (const char* name : {"A", "B", "C", "D"}) {
        new Board(name, boards);
    }
    QStringList visited;
    Board* board = nullptr;
    for (ForEachControler<Board*> loop(board, MapCollection<std::string, Board*>(boards));
         loop.next();) {
        visited << QString::fromStdString(board->name);
        delete board;
    }
    QCOMPARE(visited, (QStringList{"A", "B", "C", "D"}));
    QVERIFY(boards.empty());
}

void ForEachTest::theWalkHasMovedOnWhenTheBodyRuns()
{
    std::list<std::string> texts{"a", "b"};
    QStringList visited;
    std::string item;
    for (ForEachControler<std::string> loop(item, ListCollection<std::string>(texts));
         loop.next();) {
        visited << QString::fromStdString(item);
        if (item == "a") {
            texts.pop_front();
            // Stands before the position that the walk has reached.
            texts.push_front("too late");
        }
    }
    QCOMPARE(visited, (QStringList{"a", "b"}));
}

void ForEachTest::theCollectionIsCopiedOnceAndLetGo()
{
    const std::vector<std::string> texts{"a", "b"};
    Counts counts;
    std::string item;
    for (ForEachControler<std::string> loop(item, CountedCollection<std::string>(texts, counts));
         loop.next();) {
        QCOMPARE(counts.clones, 1);
        // Only the locator of the loop is left.
        QCOMPARE(counts.drivers, 1);
    }
    QCOMPARE(item, std::string("b"));
}

void ForEachTest::theLoopKeepsNothingAfterItsEnd()
{
    const std::vector<std::string> texts{"a"};
    Counts counts;
    std::string item;
    ForEachControler<std::string> loop(item, CountedCollection<std::string>(texts, counts));
    QVERIFY(loop.next());
    QCOMPARE(counts.drivers, 1);
    QVERIFY(!loop.next());
    QCOMPARE(counts.drivers, 0);
    QVERIFY(!loop.next());
}

void ForEachTest::aBodyMayLeaveTheLoopEarly()
{
    const std::vector<std::string> texts{"a", "b"};
    Counts counts;
    QCOMPARE(findFirst(CountedCollection<std::string>(texts, counts)), QString("a"));
    QCOMPARE(counts.drivers, 0);
}

void ForEachTest::theFlagTellsOfALoopInProgress()
{
    const std::list<std::string> texts{"a", "b"};
    std::string item;
    for (ForEachControler<std::string> loop(item, ListCollection<std::string>(texts));
         loop.next();) {
        QVERIFY(ForEachControler<std::string>::_continue);
    }
    QVERIFY(!ForEachControler<std::string>::_continue);
    findFirst(ListCollection<std::string>(texts));
    QVERIFY(ForEachControler<std::string>::_continue);
}

void ForEachTest::theFlagsOfTwoThreadsAreTheirOwn()
{
    const std::list<std::string> texts{"a"};
    std::string item;
    ForEachControler<std::string> loop(item, ListCollection<std::string>(texts));
    const std::unique_ptr<QThread> thread(QThread::create([] {
        std::string piece;
        for (ForEachControler<std::string> other(piece, getSplitted("x\ny", "\n")); other.next();) {
        }
    }));
    thread->start();
    thread->wait();
    QVERIFY(ForEachControler<std::string>::_continue);
}

void ForEachTest::loopsNest()
{
    const std::list<std::string> texts{"a", "b"};
    QStringList pairs;
    std::string outer;
    std::string inner;
    for (ForEachControler<std::string> first(outer, ListCollection<std::string>(texts));
         first.next();) {
        for (ForEachControler<std::string> second(inner, ListCollection<std::string>(texts));
             second.next();) {
            pairs << QString::fromStdString(outer + inner);
        }
    }
    QCOMPARE(pairs, (QStringList{"aa", "ab", "ba", "bb"}));
}

void ForEachTest::aLongWalkNeitherClonesNorReadsTwice()
{
    const std::vector<std::string> texts(1000, "a");
    Counts counts;
    std::string item;
    for (ForEachControler<std::string> loop(item, CountedCollection<std::string>(texts, counts));
         loop.next();) {
    }
    QCOMPARE(counts.reads, 1000);
    QCOMPARE(counts.steps, 1000);
    QVERIFY(counts.validityTests <= 1001);
    QCOMPARE(counts.clones, 1);
}

QTEST_APPLESS_MAIN(ForEachTest)
#include "tst_foreach.moc"
