#include "Walk.h"

#include <foundation/ListCollection.h>

#include <QTest>

#include <deque>

namespace
{

std::deque<quint64> nextDraws;

} // namespace

namespace Orvex
{

// The definition of the program goes before that of the library: what a test has laid out is drawn,
// and then every draw is a tie.
quint64 getRandomValue()
{
    if (nextDraws.empty()) {
        return 42;
    }
    const quint64 draw = nextDraws.front();
    nextDraws.pop_front();
    return draw;
}

} // namespace Orvex

using namespace Orvex;

class RandomTiesTest : public QObject
{
    Q_OBJECT

private slots:
    void eachElementDrawsItsFirstKeyAndThenItsSecond();
    void elementsThatDrawTheSamePlaceAreAllVisited();
    void aCopyGoesOnInTheSameOrder();
};

void RandomTiesTest::eachElementDrawsItsFirstKeyAndThenItsSecond()
{
    const std::list<std::string> texts{"a", "b", "c"};
    nextDraws = {5, 1, 4, 9, 4, 2};
    QCOMPARE(walk(ListCollection<std::string>(texts).getRandomLocator()), QString("c,b,a"));
    QVERIFY(nextDraws.empty());
}

void RandomTiesTest::elementsThatDrawTheSamePlaceAreAllVisited()
{
    const std::list<std::string> texts{"a", "b", "b", "c", "d"};
    QStringList walked = walk(ListCollection<std::string>(texts).getRandomLocator()).split(',');
    walked.sort();
    QCOMPARE(walked, (QStringList{"a", "b", "b", "c", "d"}));
}

void RandomTiesTest::aCopyGoesOnInTheSameOrder()
{
    const std::list<std::string> texts{"a", "b", "c", "d", "e", "f"};
    Locator<std::string> locator = ListCollection<std::string>(texts).getRandomLocator();
    locator.progress();
    locator.progress();
    const Locator<std::string> copy(locator);
    QCOMPARE(walk(copy), walk(locator));
    QCOMPARE(walk(copy).count(','), 3);
}

QTEST_APPLESS_MAIN(RandomTiesTest)
#include "tst_randomties.moc"
