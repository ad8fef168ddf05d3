#include "Variants.h"
#include "Walk.h"

#include <QTest>

#include <memory>
#include <type_traits>
#include <utility>

using namespace Orvex;

// A handle is its owning pointer and nothing else.
static_assert(sizeof(Collection<std::string>) == sizeof(void*));
static_assert(sizeof(ListCollection<std::string>) == sizeof(void*));
static_assert(sizeof(FromCollection<std::string>) == sizeof(void*));

// A view of a container that ends with the statement cannot be made.
static_assert(!std::is_constructible_v<ListCollection<int>, std::list<int>>);
static_assert(!std::is_constructible_v<SetCollection<int>, std::set<int>>);
static_assert(!std::is_constructible_v<MapCollection<int, int>, std::map<int, int>>);
static_assert(std::is_constructible_v<ListCollection<int>, std::list<int>&>);

namespace
{

struct Descending {
    bool operator()(int first, int second) const { return first > second; }
};

/// Has no elements, and locators that do not guard what they answer past the end.
class CarelessDriver : public Collection<std::string>::Driver
{
public:
    class LocatorDriver : public Locator<std::string>::Driver
    {
    public:
        LocatorDriver* getClone() const override { return new LocatorDriver(*this); }
        std::string getCurrent() const override { return "left over"; }
        bool isValid() const override { return false; }
        void progress() override {}
    };

    CarelessDriver* getClone() const override { return new CarelessDriver(*this); }
    Locator<std::string> getLocator() const override
    {
        return Locator<std::string>(new LocatorDriver);
    }
    Locator<std::string> getReverseLocator() const override { return getLocator(); }
};

void addVariants()
{
    QTest::addColumn<QString>("variant");
    QTest::addColumn<QStringList>("texts");
    for (const QString& name : Variants::getNames()) {
        for (const QStringList& texts :
             {QStringList(), QStringList{"a"}, QStringList{"a", "b", "c"}}) {
            if (Variants::canHold(name, texts.size())) {
                QTest::addRow("%s of %d", qPrintable(name), texts.size()) << name << texts;
            }
        }
    }
}

QStringList reversed(QStringList texts)
{
    std::reverse(texts.begin(), texts.end());
    return texts;
}

} // namespace

class CollectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void aNullHandleIsAnEmptyCollection();
    void aNullHandleCopiesToANullHandle();
    void aNullHandleOfPointersGivesNullPointers();
    void eachVariantAnswersForItsElements_data() { addVariants(); }
    void eachVariantAnswersForItsElements();
    void eachVariantIsWalkedInBothDirections_data() { addVariants(); }
    void eachVariantIsWalkedInBothDirections();
    void eachVariantIsWalkedAtRandom_data() { addVariants(); }
    void eachVariantIsWalkedAtRandom();
    void eachVariantGivesTheElementAtAnIndex_data() { addVariants(); }
    void eachVariantGivesTheElementAtAnIndex();
    void eachVariantKnowsItsExactCount_data() { addVariants(); }
    void eachVariantKnowsItsExactCount();
    void aCopyOfEachVariantShowsTheSame_data() { addVariants(); }
    void aCopyOfEachVariantShowsTheSame();
    void theLabelIsTheNameOfTheDriver();
    void theExactCountOfAGenericCollectionStopsOneElementLater();
    void emptinessAndTheFirstElementReadAtMostOneElement();
    void whatALocatorAnswersPastItsEndIsNoElement();
    void aCopyIsOneCloneAndDriversAreNeverShared();
    void anAssignedHandleLetsItsDriverGo();
    void aHandleOwnsTheDriverThatItIsGiven();
    void anArrayAnswersWithItsSize();
    void aMapIsWalkedInTheOrderOfItsKeys();
    void aContainerWithItsOwnOrderIsWalkedInIt();
    void aViewSeesWhatItsContainerHoldsNow();
    void anOwnedListLivesAsLongAsItsLastLocator();
    void aTailBeginsAtTheFirstOccurrence_data();
    void aTailBeginsAtTheFirstOccurrence();
    void aTailOfANullSourceIsEmpty();
    void aTailComparesPointersByIdentity();
    void aTailSearchesAnewForEachWalk();
    void membershipIsATailThatIsNotEmpty();
    void viewsOfViewsWalkTheLiveContents();
};

void CollectionsTest::aNullHandleIsAnEmptyCollection()
{
    const Collection<std::string> null;
    QVERIFY(null.isNull());
    QVERIFY(null.isEmpty());
    QCOMPARE(null.getCount(), 0UL);
    QVERIFY(null.hasCount(0));
    QVERIFY(!null.hasCount(1));
    QCOMPARE(null.getFirst(), std::string());
    QCOMPARE(null.getLast(), std::string());
    QCOMPARE(null.getAt(0), std::string());
    for (Locator<std::string> locator :
         {null.getLocator(), null.getReverseLocator(), null.getRandomLocator()}) {
        QVERIFY(locator.isNull());
        QVERIFY(!locator.isValid());
        QCOMPARE(locator.getCurrent(), std::string());
        locator.progress();
        QVERIFY(locator.isNull());
    }
}

void CollectionsTest::aNullHandleCopiesToANullHandle()
{
    const Collection<std::string> null;
    const Collection<std::string> copy(null);
    QVERIFY(copy.isNull());
    const std::list<std::string> texts{"a"};
    Collection<std::string> assigned = ListCollection<std::string>(texts);
    QVERIFY(!assigned.isNull());
    assigned = null;
    QVERIFY(assigned.isNull());
    const Locator<std::string> nullLocator;
    QVERIFY(Locator<std::string>(nullLocator).isNull());
}

void CollectionsTest::aNullHandleOfPointersGivesNullPointers()
{
    const Collection<int*> null;
    QVERIFY(null.getFirst() == nullptr);
    QVERIFY(null.getLast() == nullptr);
    QVERIFY(null.getAt(4) == nullptr);
    QVERIFY(null.getLocator().getCurrent() == nullptr);
}

void CollectionsTest::eachVariantAnswersForItsElements()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    const Collection<std::string> collection = variants.show(variant);
    QCOMPARE(collection.isEmpty(), texts.isEmpty());
    QCOMPARE(collection.getCount(), static_cast<unsigned long>(texts.size()));
    QCOMPARE(toText(collection.getFirst()), texts.value(0));
    QCOMPARE(toText(collection.getLast()), texts.value(texts.size() - 1));
}

void CollectionsTest::eachVariantIsWalkedInBothDirections()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    const Collection<std::string> collection = variants.show(variant);
    QCOMPARE(walk(collection.getLocator()), texts.join(','));
    QCOMPARE(walk(collection.getReverseLocator()), reversed(texts).join(','));
}

void CollectionsTest::eachVariantIsWalkedAtRandom()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    QStringList walked =
        walk(variants.show(variant).getRandomLocator()).split(',', Qt::SkipEmptyParts);
    walked.sort();
    QCOMPARE(walked, texts);
}

void CollectionsTest::eachVariantGivesTheElementAtAnIndex()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    const Collection<std::string> collection = variants.show(variant);
    for (int index = 0; index < texts.size() + 2; ++index) {
        QCOMPARE(toText(collection.getAt(static_cast<unsigned long>(index))), texts.value(index));
    }
    QCOMPARE(collection.getAt(0), collection.getFirst());
}

void CollectionsTest::eachVariantKnowsItsExactCount()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    const Collection<std::string> collection = variants.show(variant);
    for (int count = 0; count < texts.size() + 3; ++count) {
        QCOMPARE(collection.hasCount(static_cast<unsigned long>(count)), count == texts.size());
    }
}

void CollectionsTest::aCopyOfEachVariantShowsTheSame()
{
    QFETCH(QString, variant);
    QFETCH(QStringList, texts);
    Variants variants(texts);
    Collection<std::string> copy;
    {
        const Collection<std::string> original = variants.show(variant);
        copy = original;
    }
    QCOMPARE(walk(copy.getLocator()), texts.join(','));
    QCOMPARE(walk(copy.getReverseLocator()), reversed(texts).join(','));
    QCOMPARE(copy.getCount(), static_cast<unsigned long>(texts.size()));
}

void CollectionsTest::theLabelIsTheNameOfTheDriver()
{
    const std::list<int> numbers{1};
    const ListCollection<int>::Driver driver(numbers);
    QCOMPARE(driver._getLabel().getText(), std::string("Orvex::ListCollection<int>::Driver"));
    const ListLocator<int>::Driver locator(numbers);
    QCOMPARE(locator._getLabel().getText(), std::string("Orvex::ListLocator<int>::Driver"));
}

void CollectionsTest::theExactCountOfAGenericCollectionStopsOneElementLater()
{
    const std::vector<std::string> texts{"a", "b", "c", "d", "e"};
    Counts counts;
    const CountedCollection<std::string> collection(texts, counts);
    QVERIFY(!collection.hasCount(2));
    QVERIFY2(counts.steps <= 2, "it went past the element after the second");
    QVERIFY(counts.validityTests <= 3);
    QVERIFY(counts.reads <= 3);
}

void CollectionsTest::emptinessAndTheFirstElementReadAtMostOneElement()
{
    const std::vector<std::string> texts{"a", "b", "c"};
    Counts counts;
    const CountedCollection<std::string> collection(texts, counts);
    QVERIFY(!collection.isEmpty());
    QVERIFY(!collection.hasCount(0));
    QCOMPARE(counts.reads, 0);
    QCOMPARE(collection.getFirst(), std::string("a"));
    QCOMPARE(counts.reads, 1);
    QCOMPARE(counts.steps, 0);
}

void CollectionsTest::whatALocatorAnswersPastItsEndIsNoElement()
{
    const Collection<std::string> collection(new CarelessDriver);
    QCOMPARE(collection.getFirst(), std::string());
    QCOMPARE(collection.getLast(), std::string());
    QCOMPARE(collection.getAt(0), std::string());
}

void CollectionsTest::aCopyIsOneCloneAndDriversAreNeverShared()
{
    const std::vector<std::string> texts{"a"};
    Counts counts;
    {
        const CountedCollection<std::string> original(texts, counts);
        QCOMPARE(counts.drivers, 1);
        const Collection<std::string> first(original);
        const Collection<std::string> second(first);
        QCOMPARE(counts.drivers, 3);
        QCOMPARE(counts.clones, 2);
    }
    QCOMPARE(counts.drivers, 0);
}

void CollectionsTest::anAssignedHandleLetsItsDriverGo()
{
    const std::vector<std::string> texts{"a"};
    Counts first;
    Counts second;
    Collection<std::string> collection = CountedCollection<std::string>(texts, first);
    const Collection<std::string> other = CountedCollection<std::string>(texts, second);
    collection = other;
    QCOMPARE(first.drivers, 0);
    QCOMPARE(second.drivers, 2);
    const Collection<std::string>& itself = collection;
    collection = itself;
    QCOMPARE(walk(collection), QString("a"));
}

void CollectionsTest::aHandleOwnsTheDriverThatItIsGiven()
{
    const std::vector<std::string> texts{"a"};
    Counts counts;
    {
        const Collection<std::string> collection(
            new CountedCollection<std::string>::Driver(texts, counts));
        const Locator<std::string> locator = collection.getLocator();
        QCOMPARE(counts.drivers, 2);
    }
    QCOMPARE(counts.drivers, 0);
    QVERIFY(Collection<std::string>(nullptr).isNull());
}

void CollectionsTest::anArrayAnswersWithItsSize()
{
    const std::string texts[3] = {"a", "b", "c"};
    const ArrayCollection<std::string, 3> collection(texts);
    QVERIFY(collection.hasCount(3));
    QVERIFY(!collection.hasCount(2));
    QVERIFY(!collection.isEmpty());
    QCOMPARE(collection.getLast(), std::string("c"));
}

void CollectionsTest::aMapIsWalkedInTheOrderOfItsKeys()
{
    const std::map<std::string, int> numbers{{"z", 1}, {"a", 2}, {"m", 3}};
    const MapCollection<std::string, int> collection(numbers);
    QCOMPARE(walk(collection), QString("2,3,1"));
    QCOMPARE(collection.getFirst(), 2);
    QCOMPARE(collection.getLast(), 1);
    QCOMPARE(walk(collection.getReverseLocator()), QString("1,3,2"));
}

void CollectionsTest::aContainerWithItsOwnOrderIsWalkedInIt()
{
    const std::set<int, Descending> set{1, 3, 2};
    const SetCollection<int, Descending> ordered(set);
    QCOMPARE(walk(ordered), QString("3,2,1"));
    QCOMPARE(ordered.getFirst(), 3);
    const std::map<int, int, Descending> map{{1, 10}, {2, 20}};
    QCOMPARE(walk(MapCollection<int, int, Descending>(map)), QString("20,10"));
}

void CollectionsTest::aViewSeesWhatItsContainerHoldsNow()
{
    std::list<std::string> texts;
    const Collection<std::string> view = ListCollection<std::string>(texts);
    QVERIFY(view.isEmpty());
    texts = {"a", "b"};
    QCOMPARE(walk(view), QString("a,b"));
    QCOMPARE(view.getCount(), 2UL);
    texts.pop_front();
    QCOMPARE(view.getFirst(), std::string("b"));
}

void CollectionsTest::anOwnedListLivesAsLongAsItsLastLocator()
{
    Locator<std::string> forward;
    Locator<std::string> backward;
    {
        const Collection<std::string> collection =
            OwnedListCollection<std::string>(std::list<std::string>{"a", "b"});
        forward = collection.getLocator();
        backward = collection.getReverseLocator();
    }
    QCOMPARE(walk(forward), QString("a,b"));
    QCOMPARE(walk(backward), QString("b,a"));
}

void CollectionsTest::aTailBeginsAtTheFirstOccurrence_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("forward");
    QTest::addColumn<QString>("backward");
    QTest::newRow("first") << "a"
                           << "a,b,c,b"
                           << "b,c,b,a";
    QTest::newRow("repeated") << "b"
                              << "b,c,b"
                              << "b,c,b";
    QTest::newRow("inner") << "c"
                           << "c,b"
                           << "b,c";
    QTest::newRow("absent") << "z"
                            << ""
                            << "";
    QTest::newRow("beginning of an element") << ""
                                             << ""
                                             << "";
}

void CollectionsTest::aTailBeginsAtTheFirstOccurrence()
{
    QFETCH(QString, value);
    QFETCH(QString, forward);
    QFETCH(QString, backward);
    const std::list<std::string> texts{"a", "b", "c", "b"};
    const FromCollection<std::string> tail(ListCollection<std::string>(texts), value.toStdString());
    QCOMPARE(walk(tail), forward);
    QCOMPARE(walk(tail.getReverseLocator()), backward);
    QCOMPARE(tail.isEmpty(), forward.isEmpty());

    const std::list<std::string> simple{"a", "b", "c"};
    const FromCollection<std::string> fromB(ListCollection<std::string>(simple), "b");
    QCOMPARE(walk(fromB), QString("b,c"));
    QCOMPARE(walk(fromB.getReverseLocator()), QString("c,b"));

    const std::list<std::string> pieces{"", "a", ""};
    QCOMPARE(walk(FromCollection<std::string>(ListCollection<std::string>(pieces), "a")),
             QString("a,"));
    QVERIFY(FromCollection<std::string>(ListCollection<std::string>(pieces), "z").isEmpty());
}

void CollectionsTest::aTailOfANullSourceIsEmpty()
{
    const FromCollection<std::string> tail(Collection<std::string>(), "a");
    QVERIFY(tail.isEmpty());
    QCOMPARE(tail.getCount(), 0UL);
    QCOMPARE(tail.getFirst(), std::string());
    QCOMPARE(tail.getLast(), std::string());
    Locator<std::string> locator = tail.getLocator();
    QVERIFY(!locator.isValid());
    locator.progress();
    QCOMPARE(locator.getCurrent(), std::string());
    QVERIFY(Collection<std::string>(tail).isEmpty());
}

void CollectionsTest::aTailComparesPointersByIdentity()
{
    int first = 1;
    int second = 1;
    const std::list<int*> pointers{&first};
    QVERIFY(FromCollection<int*>(ListCollection<int*>(pointers), &second).isEmpty());
    QVERIFY(!FromCollection<int*>(ListCollection<int*>(pointers), &first).isEmpty());
}

void CollectionsTest::aTailSearchesAnewForEachWalk()
{
    std::list<std::string> texts{"a"};
    const FromCollection<std::string> tail(ListCollection<std::string>(texts), "b");
    QVERIFY(tail.isEmpty());
    texts.push_back("b");
    QCOMPARE(walk(tail), QString("b"));
}

void CollectionsTest::membershipIsATailThatIsNotEmpty()
{
    const std::string suffixes[3] = {"ksb", "bbs", "bts"};
    const ArrayCollection<std::string, 3> known(suffixes);
    QVERIFY(!FromCollection<std::string>(known, "bbs").isEmpty());
    QVERIFY(FromCollection<std::string>(known, "bb").isEmpty());
    QVERIFY(FromCollection<std::string>(known, "BBS").isEmpty());
}

void CollectionsTest::viewsOfViewsWalkTheLiveContents()
{
    std::list<std::string> texts{"a", "-", "b"};
    const FunctionPredicate<std::string> isWord(
        [](const std::string& text) { return text != "-"; });
    const SubsetCollection<std::string, bool> words(ListCollection<std::string>(texts), isWord);
    const Collection<std::string> tail = FromCollection<std::string>(words, "b");
    QCOMPARE(walk(tail), QString("b"));
    texts.push_back("-");
    texts.push_back("c");
    QCOMPARE(walk(tail), QString("b,c"));
    QCOMPARE(walk(tail.getReverseLocator()), QString("c,b"));
}

QTEST_APPLESS_MAIN(CollectionsTest)
#include "tst_collections.moc"
