#include "Walk.h"

#include <foundation/ListCollection.h>

#include <QTest>

namespace Orvex
{

// The definition of the program goes before that of the library: every draw is a tie.
quint64 getRandomValue()
{
    return 42;
}

} // namespace Orvex

using namespace Orvex;

class RandomTiesTest : public QObject
{
    Q_OBJECT

private slots:
    void elementsThatDrawTheSamePlaceAreAllVisited();
    void aCopyGoesOnInTheSameOrder();
};

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
