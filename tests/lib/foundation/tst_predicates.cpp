#include "CountedCollection.h"
#include "FunctionPredicate.h"
#include "Walk.h"

#include <foundation/ListCollection.h>
#include <foundation/MemberPredicate.h>
#include <foundation/NotPredicate.h>
#include <foundation/SetCollection.h>
#include <foundation/SubsetCollection.h>

#include <QTest>

#include <memory>
#include <type_traits>

using namespace Orvex;

namespace
{

struct Command {
    int number;
    bool finished;

    bool hasFinished() const { return finished; }
    bool isOdd() const noexcept { return number % 2 != 0; }
};

using CommandPredicate = Predicate<Command*, bool>;
using CommandMember = MemberPredicate<Command*, bool>;
using CommandNegation = NotPredicate<Command*>;
using CommandSubset = SubsetCollection<Command*, bool>;

static_assert(sizeof(CommandPredicate) == sizeof(void*));
static_assert(std::is_base_of_v<CommandPredicate, CommandNegation>);
static_assert(
    std::is_base_of_v<CommandPredicate::Driver, CommandMember::Driver<bool (Command::*)() const>>);
static_assert(std::is_base_of_v<CommandPredicate::Driver, CommandNegation::Driver<bool>>);

struct ByNumber {
    bool operator()(const Command* first, const Command* second) const
    {
        return first->number < second->number;
    }
};

bool isEven(const int& number)
{
    return number % 2 == 0;
}

} // namespace

class PredicatesTest : public QObject
{
    Q_OBJECT

private slots:
    void aNullPredicateAcceptsNothingAndCopiesToNull();
    void aMemberPredicateAsksItsMember();
    void aNegationAcceptsTheRest();
    void aNegationOfNothingAcceptsEverything();
    void aNegationOwnsWhatItNegates();
    void aCopyBehavesAsItsOriginal();
    void aCloneForAContextBehavesAsAClone_data();
    void aCloneForAContextBehavesAsAClone();
    void theLabelIsTheNameOfTheDriver();
    void aSubsetShowsWhatPasses_data();
    void aSubsetShowsWhatPasses();
    void aSubsetOfTheOneUnfinishedCommandHasItOnly();
    void aCommandThatFinishesLeavesTheSubset();
    void anElementStaysCurrentWhenItStopsPassing();
    void aCopiedLocatorDoesNotTestAgain();
    void aStepBehindTheEndOfASubsetDoesNothing();
    void withoutAPredicateASubsetIsEmpty();
    void aSubsetOfANullSourceIsEmpty();
    void aReverseWalkOfASubsetIsLive();
    void theCountWalksTheFilteredSequence();
    void emptinessStopsAtTheFirstThatPasses();
    void aWalkReadsEachElementOnceAndClonesNothing();
    void subsetsNest();
};

void PredicatesTest::aNullPredicateAcceptsNothingAndCopiesToNull()
{
    const Predicate<int, bool> null;
    QVERIFY(null.isNull());
    QVERIFY(!null.accept(1));
    QVERIFY((Predicate<int, bool>(null).isNull()));
    Predicate<int, bool> assigned = FunctionPredicate<int>(isEven);
    assigned = null;
    QVERIFY(assigned.isNull());
}

void PredicatesTest::aMemberPredicateAsksItsMember()
{
    Command command{1, false};
    const CommandMember finished(&Command::hasFinished);
    QVERIFY(!finished.accept(&command));
    command.finished = true;
    QVERIFY(finished.accept(&command));
    QVERIFY(CommandMember(&Command::isOdd).accept(&command));
}

void PredicatesTest::aNegationAcceptsTheRest()
{
    Command command{1, false};
    const CommandNegation pending{CommandMember(&Command::hasFinished)};
    QVERIFY(pending.accept(&command));
    command.finished = true;
    QVERIFY(!pending.accept(&command));
}

void PredicatesTest::aNegationOfNothingAcceptsEverything()
{
    const NotPredicate<int> everything{Predicate<int, bool>()};
    QVERIFY(!everything.isNull());
    QVERIFY(everything.accept(0));
    QVERIFY(everything.accept(1));
    QVERIFY((Predicate<int, bool>(everything).accept(7)));
}

void PredicatesTest::aNegationOwnsWhatItNegates()
{
    std::unique_ptr<Predicate<int, bool>> even =
        std::make_unique<Predicate<int, bool>>(FunctionPredicate<int>(isEven));
    const NotPredicate<int> odd(*even);
    even.reset();
    QVERIFY(odd.accept(3));
    QVERIFY(!odd.accept(4));
}

void PredicatesTest::aCopyBehavesAsItsOriginal()
{
    std::unique_ptr<CommandPredicate> original =
        std::make_unique<CommandPredicate>(CommandMember(&Command::hasFinished));
    const CommandPredicate copy(*original);
    original.reset();
    Command command{1, true};
    QVERIFY(copy.accept(&command));
}

void PredicatesTest::aCloneForAContextBehavesAsAClone_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("member") << 0;
    QTest::newRow("negation") << 1;
    QTest::newRow("negation of nothing") << 2;
}

void PredicatesTest::aCloneForAContextBehavesAsAClone()
{
    QFETCH(int, kind);
    using Member = CommandMember::Driver<bool (Command::*)() const>;
    using Negation = CommandNegation::Driver<bool>;
    std::unique_ptr<CommandPredicate::Driver> driver;
    if (kind == 0) {
        driver = std::make_unique<Member>(&Command::hasFinished);
    } else if (kind == 1) {
        driver = std::make_unique<Negation>(CommandMember(&Command::hasFinished));
    } else {
        driver = std::make_unique<Negation>(CommandPredicate());
    }
    for (const bool context : {false, true}) {
        const std::unique_ptr<CommandPredicate::Driver> plain(driver->getClone());
        const std::unique_ptr<CommandPredicate::Driver> special(driver->getClone(context));
        QVERIFY(special.get() != driver.get());
        for (const bool finished : {false, true}) {
            Command command{1, finished};
            QCOMPARE(special->accept(&command), plain->accept(&command));
            QCOMPARE(special->accept(&command), driver->accept(&command));
        }
    }
}

void PredicatesTest::theLabelIsTheNameOfTheDriver()
{
    const NotPredicate<int>::Driver<bool> driver{Predicate<int, bool>()};
    QCOMPARE(driver._getLabel().getText(), std::string("Orvex::NotPredicate<int>::Driver<bool>"));
}

void PredicatesTest::aSubsetShowsWhatPasses_data()
{
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<QString>("forward");
    QTest::addColumn<QString>("backward");
    QTest::newRow("empty source") << QList<int>() << ""
                                  << "";
    QTest::newRow("none") << QList<int>{1, 3} << ""
                          << "";
    QTest::newRow("all") << QList<int>{2, 4} << "2,4"
                         << "4,2";
    QTest::newRow("inner ones") << QList<int>{1, 2, 3, 4, 5} << "2,4"
                                << "4,2";
    QTest::newRow("at the ends") << QList<int>{6, 1, 8} << "6,8"
                                 << "8,6";
    QTest::newRow("last") << QList<int>{1, 3, 6} << "6"
                          << "6";
}

void PredicatesTest::aSubsetShowsWhatPasses()
{
    QFETCH(QList<int>, numbers);
    QFETCH(QString, forward);
    QFETCH(QString, backward);
    const std::list<int> source(numbers.begin(), numbers.end());
    const SubsetCollection<int, bool> subset{ListCollection<int>(source),
                                             FunctionPredicate<int>(isEven)};
    const QStringList expected = forward.split(',', Qt::SkipEmptyParts);
    QCOMPARE(walk(subset), forward);
    QCOMPARE(walk(subset.getReverseLocator()), backward);
    QCOMPARE(subset.isEmpty(), expected.isEmpty());
    QCOMPARE(subset.getCount(), static_cast<unsigned long>(expected.size()));
    QCOMPARE(subset.getFirst(), expected.value(0).toInt());
    QCOMPARE(subset.getLast(), expected.value(expected.size() - 1).toInt());
    QVERIFY(subset.hasCount(static_cast<unsigned long>(expected.size())));
}

void PredicatesTest::aSubsetOfTheOneUnfinishedCommandHasItOnly()
{
    Command commands[3] = {{1, true}, {2, true}, {3, false}};
    const std::set<Command*, ByNumber> set{&commands[0], &commands[1], &commands[2]};
    const CommandSubset pendings(SetCollection<Command*, ByNumber>(set),
                                 CommandNegation{CommandMember(&Command::hasFinished)});
    QCOMPARE(pendings.getFirst(), &commands[2]);
    QCOMPARE(pendings.getCount(), 1UL);
    Locator<Command*> locator = pendings.getLocator();
    QVERIFY(locator.isValid());
    locator.progress();
    QVERIFY(!locator.isValid());
    QVERIFY(locator.getCurrent() == nullptr);
}

void PredicatesTest::aCommandThatFinishesLeavesTheSubset()
{
    Command commands[2] = {{1, false}, {2, false}};
    const std::set<Command*, ByNumber> set{&commands[0], &commands[1]};
    const Collection<Command*> pendings =
        CommandSubset(SetCollection<Command*, ByNumber>(set),
                      CommandNegation{CommandMember(&Command::hasFinished)});
    QCOMPARE(pendings.getCount(), 2UL);
    commands[0].finished = true;
    QCOMPARE(pendings.getFirst(), &commands[1]);
    commands[1].finished = true;
    QVERIFY(pendings.isEmpty());
    QVERIFY(pendings.getFirst() == nullptr);
}

void PredicatesTest::anElementStaysCurrentWhenItStopsPassing()
{
    Command command{1, false};
    const std::list<Command*> list{&command};
    const CommandSubset pendings(ListCollection<Command*>(list),
                                 CommandNegation{CommandMember(&Command::hasFinished)});
    const Locator<Command*> locator = pendings.getLocator();
    command.finished = true;
    QVERIFY(locator.isValid());
    QCOMPARE(locator.getCurrent(), &command);
}

void PredicatesTest::aCopiedLocatorDoesNotTestAgain()
{
    Command command{1, false};
    const std::list<Command*> list{&command};
    const CommandSubset pendings(ListCollection<Command*>(list),
                                 CommandNegation{CommandMember(&Command::hasFinished)});
    const Locator<Command*> locator = pendings.getLocator();
    command.finished = true;
    const Locator<Command*> copy(locator);
    QCOMPARE(copy.getCurrent(), &command);
}

void PredicatesTest::aStepBehindTheEndOfASubsetDoesNothing()
{
    const std::vector<int> numbers{1, 2};
    Counts counts;
    const SubsetCollection<int, bool> subset(CountedCollection<int>(numbers, counts),
                                             FunctionPredicate<int>(isEven));
    Locator<int> locator = subset.getLocator();
    locator.progress();
    QVERIFY(!locator.isValid());
    const int steps = counts.steps;
    locator.progress();
    locator.progress();
    QVERIFY(!locator.isValid());
    QCOMPARE(counts.steps, steps);
}

void PredicatesTest::withoutAPredicateASubsetIsEmpty()
{
    const std::list<int> numbers{1, 2};
    const SubsetCollection<int, bool> subset{ListCollection<int>(numbers), Predicate<int, bool>()};
    QVERIFY(subset.isEmpty());
    QCOMPARE(subset.getCount(), 0UL);
    QVERIFY(!subset.getReverseLocator().isValid());
    QVERIFY(Collection<int>(subset).isEmpty());
    const SubsetCollection<int, bool> all(ListCollection<int>(numbers),
                                          NotPredicate<int>{Predicate<int, bool>()});
    QCOMPARE(walk(all), QString("1,2"));
}

void PredicatesTest::aSubsetOfANullSourceIsEmpty()
{
    const SubsetCollection<int, bool> subset{Collection<int>(), FunctionPredicate<int>(isEven)};
    QVERIFY(subset.isEmpty());
    QCOMPARE(subset.getFirst(), 0);
    QCOMPARE(subset.getLast(), 0);
    Locator<int> locator = subset.getLocator();
    locator.progress();
    QVERIFY(!locator.isValid());
    QCOMPARE(locator.getCurrent(), 0);
    QVERIFY(!subset.getReverseLocator().isValid());
    QVERIFY(Collection<int>(subset).isEmpty());
}

void PredicatesTest::aReverseWalkOfASubsetIsLive()
{
    std::list<int> numbers{2, 3};
    const SubsetCollection<int, bool> subset{ListCollection<int>(numbers),
                                             FunctionPredicate<int>(isEven)};
    const Locator<int> locator = subset.getReverseLocator();
    numbers.push_front(8);
    QCOMPARE(walk(locator), QString("2,8"));
}

void PredicatesTest::theCountWalksTheFilteredSequence()
{
    const std::vector<int> numbers{1, 2, 3, 4};
    Counts counts;
    const SubsetCollection<int, bool> subset(CountedCollection<int>(numbers, counts),
                                             FunctionPredicate<int>(isEven));
    QCOMPARE(subset.getCount(), 2UL);
    QCOMPARE(counts.steps, 4);
}

void PredicatesTest::emptinessStopsAtTheFirstThatPasses()
{
    const std::vector<int> numbers{1, 2, 3, 4};
    Counts counts;
    const SubsetCollection<int, bool> subset(CountedCollection<int>(numbers, counts),
                                             FunctionPredicate<int>(isEven));
    QVERIFY(!subset.isEmpty());
    QCOMPARE(counts.steps, 1);
    QCOMPARE(counts.reads, 2);
}

void PredicatesTest::aWalkReadsEachElementOnceAndClonesNothing()
{
    const std::vector<int> numbers(1000, 2);
    Counts counts;
    const SubsetCollection<int, bool> subset(CountedCollection<int>(numbers, counts),
                                             FunctionPredicate<int>(isEven));
    const int clones = counts.clones;
    QCOMPARE(subset.getCount(), 1000UL);
    QCOMPARE(counts.reads, 1000);
    QCOMPARE(counts.clones, clones);
    QVERIFY(counts.validityTests <= 4 * 1001);
}

void PredicatesTest::subsetsNest()
{
    const std::list<int> numbers{1, 2, 3, 4, 5, 6, 7, 8};
    const SubsetCollection<int, bool> even{ListCollection<int>(numbers),
                                           FunctionPredicate<int>(isEven)};
    const SubsetCollection<int, bool> large(
        even, FunctionPredicate<int>([](const int& number) { return number > 4; }));
    QCOMPARE(walk(large), QString("6,8"));
    QCOMPARE(walk(large.getReverseLocator()), QString("8,6"));
}

QTEST_APPLESS_MAIN(PredicatesTest)
#include "tst_predicates.moc"
