#include <foundation/Collection.h>
#include <foundation/Exception.h>
#include <foundation/Locator.h>
#include <foundation/Predicate.h>
#include <foundation/QStuff.h>
#include <foundation/Slot.h>

#include <QTest>

#include <cstddef>
#include <cstring>
#include <string>

using namespace Orvex;

namespace
{

using TextCollection = Collection<std::string>::Driver;
using TextLocator = Locator<std::string>::Driver;
using TextPredicate = Predicate<std::string, bool>::Driver;

/// How many entries of the class's table of virtual operations stand before the operation. A
/// destructor has two entries.
template <class Operation>
int getPlace(Operation operation)
{
    // The first word of a pointer to a virtual member is the offset in the table, on some
    // processors plus one.
    std::ptrdiff_t offset = 0;
    static_assert(sizeof(operation) >= sizeof(offset));
    std::memcpy(&offset, &operation, sizeof(offset));
    return static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

/// Its one virtual operation of its own stands behind all those of QObject.
class Marked : public QObject
{
public:
    virtual void mark() {}
};

} // namespace

/// Code that was compiled against the headers calls a virtual operation by its place: the order of
/// the declarations is a part of the interface.
class VirtualsTest : public QObject
{
    Q_OBJECT

private slots:
    void eachOperationHasItsPlace_data();
    void eachOperationHasItsPlace();
};

void VirtualsTest::eachOperationHasItsPlace_data()
{
    QTest::addColumn<int>("actual");
    QTest::addColumn<int>("place");
    const auto row = [](const char* name, auto operation, int place) {
        QTest::newRow(name) << getPlace(operation) << place;
    };
    row("Exception::getMessage",
        static_cast<std::string (Exception::*)() const>(&Exception::getMessage), 2);
    row("Exception::getMessage of steps",
        static_cast<std::string (Exception::*)(unsigned long) const>(&Exception::getMessage), 3);
    row("Exception::_getLabel", &Exception::_getLabel, 4);

    const int own = getPlace(&Marked::mark);
    row("QStuff::_getLabel", &QStuff::_getLabel, own);
    row("QStuff::_getSlot", &QStuff::_getSlot, own + 1);
    row("QStuff::_getRecord", &QStuff::_getRecord, own + 2);
    row("QStuff::_hasRecord", &QStuff::_hasRecord, own + 3);
    row("QStuff::preDestroy", &QStuff::preDestroy, own + 4);
    row("QStuff::getAlias", &QStuff::getAlias, own + 5);

    row("Slot::getDataLabel", &Slot::getDataLabel, 0);
    row("Slot::getDataRecord", &Slot::getDataRecord, 1);
    row("Slot::isHeader", &Slot::isHeader, 2);
    row("Slot::isTerminal", &Slot::isTerminal, 3);
    row("Slot::_getLabel, behind the destructor", &Slot::_getLabel, 6);

    row("Collection::Driver::getClone", &TextCollection::getClone, 2);
    row("Collection::Driver::getLocator", &TextCollection::getLocator, 3);
    row("Collection::Driver::getReverseLocator", &TextCollection::getReverseLocator, 4);
    row("Collection::Driver::getRandomLocator", &TextCollection::getRandomLocator, 5);
    row("Collection::Driver::getCount", &TextCollection::getCount, 6);
    row("Collection::Driver::getFirst", &TextCollection::getFirst, 7);
    row("Collection::Driver::getLast", &TextCollection::getLast, 8);
    row("Collection::Driver::getAt", &TextCollection::getAt, 9);
    row("Collection::Driver::_getLabel", &TextCollection::_getLabel, 10);
    row("Collection::Driver::isEmpty", &TextCollection::isEmpty, 11);
    row("Collection::Driver::hasCount", &TextCollection::hasCount, 12);

    row("Locator::Driver::getClone", &TextLocator::getClone, 2);
    row("Locator::Driver::getCurrent", &TextLocator::getCurrent, 3);
    row("Locator::Driver::_getLabel", &TextLocator::_getLabel, 4);
    row("Locator::Driver::isValid", &TextLocator::isValid, 5);
    row("Locator::Driver::progress", &TextLocator::progress, 6);

    using Clone = TextPredicate* (TextPredicate::*)() const;
    using CloneForContext = TextPredicate* (TextPredicate::*)(const bool&) const;
    row("Predicate::Driver::getClone", static_cast<Clone>(&TextPredicate::getClone), 2);
    row("Predicate::Driver::getClone for a context",
        static_cast<CloneForContext>(&TextPredicate::getClone), 3);
    row("Predicate::Driver::_getLabel", &TextPredicate::_getLabel, 4);
    row("Predicate::Driver::accept", &TextPredicate::accept, 5);
}

void VirtualsTest::eachOperationHasItsPlace()
{
    QFETCH(int, actual);
    QFETCH(int, place);
    QCOMPARE(actual, place);
}

QTEST_APPLESS_MAIN(VirtualsTest)
#include "tst_virtuals.moc"
