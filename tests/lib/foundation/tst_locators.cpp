#include "Variants.h"
#include "Walk.h"

#include <QTest>

#include <limits>
#include <map>
#include <new>

using namespace Orvex;

static_assert(sizeof(Locator<std::string>) == sizeof(void*));
static_assert(sizeof(ListLocator<std::string>) == sizeof(void*));

namespace
{

enum class Direction { Forward, Backward, Random };

struct NamedDirection {
    const char* name;
    Direction direction;
};

const NamedDirection directions[] = {
    {"forward", Direction::Forward},
    {"backward", Direction::Backward},
    {"random", Direction::Random},
};

Locator<std::string> take(const Collection<std::string>& collection, Direction direction)
{
    switch (direction) {
    case Direction::Forward:
        return collection.getLocator();
    case Direction::Backward:
        return collection.getReverseLocator();
    case Direction::Random:
        break;
    }
    return collection.getRandomLocator();
}

/// An element of which only so many copies can be made, as if the memory came to its end.
class Fragile
{
public:
    Fragile() { ++alive; }
    Fragile(const Fragile&)
    {
        if (copiesLeft == 0) {
            throw std::bad_alloc();
        }
        --copiesLeft;
        ++alive;
    }
    Fragile& operator=(const Fragile&) = default;
    ~Fragile() { --alive; }

    static inline int alive = 0;
    static inline int copiesLeft = -1; // negative: any number
};

using Snapshot = Locator<Fragile> (*)(const Collection<Fragile>& collection);

/// The walks over so many elements.
void addWalks(int count)
{
    QTest::addColumn<QString>("variant");
    QTest::addColumn<int>("direction");
    for (const QString& name : Variants::getNames()) {
        for (const NamedDirection& named : directions) {
            // The counted collection has no guard of its own at the end.
            const bool guarded = name != "counted" || named.direction != Direction::Forward;
            if (guarded && Variants::canHold(name, count)) {
                QTest::addRow("%s, %s", qPrintable(name), named.name)
                    << name << static_cast<int>(named.direction);
            }
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(Snapshot)

class LocatorsTest : public QObject
{
    Q_OBJECT

private slots:
    void aLocatorAtItsEndStaysThere_data() { addWalks(3); }
    void aLocatorAtItsEndStaysThere();
    void aLocatorOverNothingIsInvalidFromTheStart_data() { addWalks(0); }
    void aLocatorOverNothingIsInvalidFromTheStart();
    void aCopyWalksOnFromTheSamePosition_data() { addWalks(3); }
    void aCopyWalksOnFromTheSamePosition();
    void readingTwiceGivesTheSame_data() { addWalks(3); }
    void readingTwiceGivesTheSame();
    void anArrayIsWalkedBackwardsPastZero();
    void aReverseLocatorOverAnEmptyListIsInvalid();
    void eachLocatorIsAHandleOfItsOwn();
    void aListLocatorSeesAnElementThatIsAddedBeforeItsEnd();
    void aListLocatorAtTheEndOfItsListGoesOnWhenItGrows();
    void aSnapshotDoesNotSeeAnElementThatIsAddedLater();
    void aReverseLocatorHoldsWhatItsSourceHadStillBeforeIt();
    void aSnapshotLeavesItsSourceWhereItIs();
    void aSnapshotThatFailsLeavesNothingBehind_data();
    void aSnapshotThatFailsLeavesNothingBehind();
    void aRandomWalkVisitsEachElementOnce();
    void randomWalksDiffer();
    void theRandomOrderIsThatOfTheKeys_data();
    void theRandomOrderIsThatOfTheKeys();
    void equalPlacesAreBothKept();
    void aSetOfPlacesCopiesWithItsOrder();
};

void LocatorsTest::aLocatorAtItsEndStaysThere()
{
    QFETCH(QString, variant);
    QFETCH(int, direction);
    Variants variants({"a", "b", "c"});
    Locator<std::string> locator = take(variants.show(variant), static_cast<Direction>(direction));
    for (int element = 0; element < 3; ++element) {
        QVERIFY(locator.isValid());
        QVERIFY(!locator.getCurrent().empty());
        locator.progress();
    }
    for (int further = 0; further < 3; ++further) {
        QVERIFY(!locator.isValid());
        QCOMPARE(locator.getCurrent(), std::string());
        locator.progress();
    }
    QVERIFY(!Locator<std::string>(locator).isValid());
}

void LocatorsTest::aLocatorOverNothingIsInvalidFromTheStart()
{
    QFETCH(QString, variant);
    QFETCH(int, direction);
    Variants variants({});
    Locator<std::string> locator = take(variants.show(variant), static_cast<Direction>(direction));
    QVERIFY(!locator.isNull());
    QVERIFY(!locator.isValid());
    QCOMPARE(locator.getCurrent(), std::string());
    locator.progress();
    QVERIFY(!locator.isValid());
}

void LocatorsTest::aCopyWalksOnFromTheSamePosition()
{
    QFETCH(QString, variant);
    QFETCH(int, direction);
    Variants variants({"a", "b", "c"});
    Locator<std::string> locator = take(variants.show(variant), static_cast<Direction>(direction));
    locator.progress();
    Locator<std::string> copy(locator);
    const QString rest = walk(copy);
    QCOMPARE(rest.count(','), 1);
    copy.progress();
    copy.progress();
    QVERIFY(!copy.isValid());
    QCOMPARE(walk(locator), rest);
}

void LocatorsTest::readingTwiceGivesTheSame()
{
    QFETCH(QString, variant);
    QFETCH(int, direction);
    Variants variants({"a", "b", "c"});
    const Locator<std::string> locator =
        take(variants.show(variant), static_cast<Direction>(direction));
    const std::string first = locator.getCurrent();
    QCOMPARE(locator.getCurrent(), first);
}

void LocatorsTest::anArrayIsWalkedBackwardsPastZero()
{
    const int numbers[3] = {10, 11, 12};
    ArrayReverseLocator<int, 3> locator(numbers);
    QList<int> walked;
    for (; locator.isValid(); locator.progress()) {
        walked << locator.getCurrent();
    }
    QCOMPARE(walked, (QList<int>{12, 11, 10}));
    locator.progress();
    locator.progress();
    QVERIFY(!locator.isValid());
    QCOMPARE(locator.getCurrent(), 0);
}

void LocatorsTest::aReverseLocatorOverAnEmptyListIsInvalid()
{
    const std::list<std::string> empty;
    ListReverseLocator<std::string> locator(empty);
    QVERIFY(!locator.isValid());
    QCOMPARE(locator.getCurrent(), std::string());
    locator.progress();
    QVERIFY(!locator.isValid());
}

void LocatorsTest::eachLocatorIsAHandleOfItsOwn()
{
    const std::list<int> list{1, 2};
    const std::set<int> set{1, 2};
    const std::map<int, int> map{{7, 1}, {8, 2}};
    const int array[2] = {1, 2};
    QCOMPARE(walk<int>(ListLocator<int>(list)), QString("1,2"));
    QCOMPARE(walk<int>(ListReverseLocator<int>(list)), QString("2,1"));
    QCOMPARE(walk<int>(SetLocator<int>(set)), QString("1,2"));
    QCOMPARE(walk<int>(SetReverseLocator<int>(set)), QString("2,1"));
    QCOMPARE((walk<int>(MapLocator<int, int>(map))), QString("1,2"));
    QCOMPARE((walk<int>(MapReverseLocator<int, int>(map))), QString("2,1"));
    QCOMPARE((walk<int>(ArrayLocator<int, 2>(array))), QString("1,2"));
    QCOMPARE((walk<int>(ArrayReverseLocator<int, 2>(array))), QString("2,1"));
    QCOMPARE(walk<int>(FromLocator<int>(ListLocator<int>(list), 2)), QString("2"));
    QCOMPARE(walk<int>(ReverseLocator<int>(ListLocator<int>(list))), QString("2,1"));
}

void LocatorsTest::aListLocatorSeesAnElementThatIsAddedBeforeItsEnd()
{
    std::list<std::string> texts{"a", "b"};
    ListLocator<std::string> locator(texts);
    locator.progress();
    texts.push_back("c");
    QCOMPARE(walk<std::string>(locator), QString("b,c"));
}

void LocatorsTest::aListLocatorAtTheEndOfItsListGoesOnWhenItGrows()
{
    std::list<std::string> texts{"a"};
    ListReverseLocator<std::string> backward(texts);
    backward.progress();
    QVERIFY(!backward.isValid());
    texts.push_front("z");
    QVERIFY(backward.isValid());
    QCOMPARE(backward.getCurrent(), std::string("z"));
}

void LocatorsTest::aSnapshotDoesNotSeeAnElementThatIsAddedLater()
{
    std::list<std::string> texts{"a", "b"};
    const ListCollection<std::string> view(texts);
    const ReverseLocator<std::string> reverse(view.getLocator());
    const Locator<std::string> random = view.getRandomLocator();
    texts.push_back("c");
    QCOMPARE(walk<std::string>(reverse), QString("b,a"));
    QCOMPARE(walk(random).count(','), 1);
    texts.clear();
    QCOMPARE(walk<std::string>(reverse), QString("b,a"));
}

void LocatorsTest::aReverseLocatorHoldsWhatItsSourceHadStillBeforeIt()
{
    const std::list<std::string> texts{"a", "b", "c"};
    ListLocator<std::string> source(texts);
    source.progress();
    QCOMPARE(walk<std::string>(ReverseLocator<std::string>(source)), QString("c,b"));
}

void LocatorsTest::aSnapshotLeavesItsSourceWhereItIs()
{
    const std::list<std::string> texts{"a", "b"};
    const ListLocator<std::string> source(texts);
    const ReverseLocator<std::string> reverse(source);
    const RandomLocator<std::string> random(source);
    QCOMPARE(source.getCurrent(), std::string("a"));
}

void LocatorsTest::aSnapshotThatFailsLeavesNothingBehind_data()
{
    QTest::addColumn<Snapshot>("take");
    const auto row = [](const char* name, Snapshot take) { QTest::newRow(name) << take; };
    row("reverse", [](const Collection<Fragile>& collection) -> Locator<Fragile> {
        return ReverseLocator<Fragile>(collection.getLocator());
    });
    row("random", [](const Collection<Fragile>& collection) -> Locator<Fragile> {
        return RandomLocator<Fragile>(collection.getLocator());
    });
    row("copy of a reverse", [](const Collection<Fragile>& collection) {
        const Locator<Fragile> original = ReverseLocator<Fragile>(collection.getLocator());
        return Locator<Fragile>(original);
    });
    row("copy of a random", [](const Collection<Fragile>& collection) {
        const Locator<Fragile> original = collection.getRandomLocator();
        return Locator<Fragile>(original);
    });
}

void LocatorsTest::aSnapshotThatFailsLeavesNothingBehind()
{
    QFETCH(Snapshot, take);
    const std::list<Fragile> elements(3);
    const ListCollection<Fragile> view(elements);
    int failures = 0;
    for (bool taken = false; !taken;) {
        Fragile::copiesLeft = failures;
        try {
            const Locator<Fragile> locator = take(view);
            taken = locator.isValid();
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        Fragile::copiesLeft = -1;
        QCOMPARE(Fragile::alive, 3);
    }
    QVERIFY(failures >= 3);
}

void LocatorsTest::aRandomWalkVisitsEachElementOnce()
{
    std::list<int> numbers;
    for (int number = 0; number < 1000; ++number) {
        numbers.push_back(number % 500);
    }
    Locator<int> locator = ListCollection<int>(numbers).getRandomLocator();
    std::map<int, int> visits;
    for (; locator.isValid(); locator.progress()) {
        ++visits[locator.getCurrent()];
    }
    QCOMPARE(visits.size(), std::size_t(500));
    for (const auto& visit : visits) {
        QCOMPARE(visit.second, 2);
    }
}

void LocatorsTest::randomWalksDiffer()
{
    std::list<int> numbers;
    for (int number = 0; number < 100; ++number) {
        numbers.push_back(number);
    }
    const ListCollection<int> view(numbers);
    // Two of 100! orders; the same one twice means that nothing was drawn.
    QVERIFY(walk(view.getRandomLocator()) != walk(view.getRandomLocator()));
    QVERIFY(walk(view.getRandomLocator()) != walk(view.getLocator()));
}

void LocatorsTest::theRandomOrderIsThatOfTheKeys_data()
{
    QTest::addColumn<quint64>("firstKey");
    QTest::addColumn<quint64>("secondKey");
    QTest::addColumn<bool>("less");
    constexpr quint64 largest = std::numeric_limits<quint64>::max();
    // Compared with the place 5, 5.
    QTest::newRow("smaller first key") << quint64(4) << quint64(9) << true;
    QTest::newRow("greater first key") << quint64(6) << quint64(0) << false;
    QTest::newRow("smaller second key") << quint64(5) << quint64(4) << true;
    QTest::newRow("the same place") << quint64(5) << quint64(5) << true;
    QTest::newRow("greater second key") << quint64(5) << quint64(6) << false;
    QTest::newRow("largest") << largest << quint64(0) << false;
}

void LocatorsTest::theRandomOrderIsThatOfTheKeys()
{
    using Data = RandomLocator<std::string>::Driver::Data;
    QFETCH(quint64, firstKey);
    QFETCH(quint64, secondKey);
    QFETCH(bool, less);
    const Data place{firstKey, secondKey, "element"};
    const Data other{5, 5, "element"};
    QCOMPARE(place < other, less);
}

void LocatorsTest::equalPlacesAreBothKept()
{
    using Data = RandomLocator<std::string>::Driver::Data;
    std::set<Data> places;
    places.insert(Data{3, 4, "first"});
    places.insert(Data{3, 4, "second"});
    places.insert(Data{3, 4, "second"});
    places.insert(Data{1, 9, "smallest"});
    QCOMPARE(places.size(), std::size_t(4));
    QCOMPARE(places.begin()->value, std::string("smallest"));
}

void LocatorsTest::aSetOfPlacesCopiesWithItsOrder()
{
    using Data = RandomLocator<std::string>::Driver::Data;
    std::set<Data> places;
    for (const char* text : {"a", "b", "c", "d", "e"}) {
        places.insert(Data{3, 4, text});
    }
    std::set<Data> copy(places);
    while (!places.empty()) {
        QCOMPARE(copy.begin()->value, places.begin()->value);
        places.erase(places.begin());
        copy.erase(copy.begin());
    }
    QVERIFY(copy.empty());
}

QTEST_APPLESS_MAIN(LocatorsTest)
#include "tst_locators.moc"
