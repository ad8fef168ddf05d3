#include <foundation/GetSlot.h>
#include <foundation/QStuff.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>
#include <foundation/StandardSlot.h>

#include <QPointer>
#include <QStringList>
#include <QTest>

#include <memory>

using namespace Orvex;

namespace
{

QStringList journal;

/// An object with the full idiom, which notes what happens to it.
class Door : public QStuff
{
public:
    static Door* create(const std::string& name)
    {
        preCreate(name);
        auto* const door = new Door(name);
        door->postCreate();
        return door;
    }
    static void preCreate(const std::string& /*name*/) { journal << "preCreate"; }
    void postCreate() { journal << "postCreate"; }
    void destroy()
    {
        preDestroy();
        delete this;
    }
    void preDestroy() override { journal << "preDestroy"; }

    std::string _getLabel() const override { return getAlias(); }
    Slot* _getSlot() const override { return new StandardSlot<Door*>(this); }
    Record* _getRecord() const override
    {
        if (!_hasRecord()) {
            return nullptr;
        }
        auto* const record = new Record(_getLabel());
        record->addHeader("Door");
        if (Slot* const slot = getSlot(7)) {
            slot->setName("Number");
            slot->setOwner(record);
        }
        if (Slot* const slot = getSlot(label)) {
            slot->setName("Name");
            slot->setOwner(record);
        }
        return record;
    }
    bool _hasRecord() const override { return recorded; }
    std::string getAlias() const override { return "Door[" + label + "]"; }

    bool recorded = true;

protected:
    explicit Door(const std::string& name)
        : label(name)
    {
        journal << "constructor";
    }
    ~Door() override { journal << "destructor"; }

private:
    std::string label;
};

/// A slot that tells when it ends.
class NotedSlot : public Slot
{
public:
    explicit NotedSlot(int& counter)
        : ended(&counter)
    {
    }
    ~NotedSlot() override { ++*ended; }

    std::string getDataLabel() const override { return "noted"; }
    Record* getDataRecord() const override { return nullptr; }
    bool isTerminal() const override { return true; }

private:
    int* ended;
};

struct DoorEnd {
    void operator()(Door* door) const { door->destroy(); }
};
using OwnedDoor = std::unique_ptr<Door, DoorEnd>;

/// Each slot as "name=value", a header as "#value".
QStringList describe(const Record& record)
{
    QStringList lines;
    for (Locator<Slot*> locator = record.getSlots().getLocator(); locator.isValid();
         locator.progress()) {
        const Slot& slot = *locator.getCurrent();
        const std::string prefix = slot.isHeader() ? "#" : slot._getLabel() + "=";
        lines << QString::fromStdString(prefix + slot.getDataLabel());
    }
    return lines;
}

} // namespace

class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { journal.clear(); }
    void anObjectIsMadeAndEndedInOrder();
    void theFirstHalfOfTheEndIsVirtual();
    void aPlainObjectKnowsItsClassAndHasNoRecord();
    void anObjectIsConstructedWithAParentOrWithout();
    void aSlotOnNothingSaysSo();
    void aSlotOnAnObjectShowsIt_data();
    void aSlotOnAnObjectShowsIt();
    void aSlotOutlivesItsObject();
    void aNewRecordIsEmpty();
    void aHeaderIsALineOfTheRecord();
    void anObjectFillsItsRecordInOrder();
    void anObjectWithoutRecordGivesNull();
    void aSlotHoldsACopyOfItsValue_data();
    void aSlotHoldsACopyOfItsValue();
    void aSlotHoldsACopyOfAText();
    void aRecordDeletesItsSlots();
    void aDeletedSlotLeavesItsRecord();
    void aSlotMovesFromRecordToRecord();
    void aSlotWithoutOwnerBelongsToTheCaller();
    void theSlotsOfARecordAreALiveView();
};

void RecordsTest::anObjectIsMadeAndEndedInOrder()
{
    Door::create("front")->destroy();
    QCOMPARE(journal,
             (QStringList{"preCreate", "constructor", "postCreate", "preDestroy", "destructor"}));
}

void RecordsTest::theFirstHalfOfTheEndIsVirtual()
{
    const OwnedDoor door(Door::create("front"));
    journal.clear();
    static_cast<QStuff*>(door.get())->preDestroy();
    QCOMPARE(journal, QStringList{"preDestroy"});
}

void RecordsTest::aPlainObjectKnowsItsClassAndHasNoRecord()
{
    QStuff object;
    QCOMPARE(object.getAlias(), std::string("Orvex::QStuff"));
    QCOMPARE(object._getLabel(), std::string("Orvex::QStuff"));
    QVERIFY(!object._hasRecord());
    QVERIFY(object._getRecord() == nullptr);
    object.preDestroy();
    const std::unique_ptr<Slot> slot(object._getSlot());
    QCOMPARE(slot->getDataLabel(), std::string("Orvex::QStuff"));
    QVERIFY(slot->isTerminal());
}

void RecordsTest::anObjectIsConstructedWithAParentOrWithout()
{
    QObject parent;
    QVERIFY(QStuff().parent() == nullptr);
    QCOMPARE((new QStuff(&parent))->parent(), &parent);
}

void RecordsTest::aSlotOnNothingSaysSo()
{
    const StandardSlot<Door*> slot(nullptr);
    QCOMPARE(slot.getDataLabel(), std::string("null"));
    QVERIFY(slot.getDataRecord() == nullptr);
    QVERIFY(slot.isTerminal());
    QVERIFY(!slot.isHeader());
}

void RecordsTest::aSlotOnAnObjectShowsIt_data()
{
    QTest::addColumn<bool>("recorded");
    QTest::newRow("with a record") << true;
    QTest::newRow("without a record") << false;
}

void RecordsTest::aSlotOnAnObjectShowsIt()
{
    QFETCH(bool, recorded);
    const OwnedDoor door(Door::create("front"));
    door->recorded = recorded;
    const std::unique_ptr<Slot> slot(door->_getSlot());
    QCOMPARE(slot->getDataLabel(), std::string("Door[front]"));
    QCOMPARE(slot->isTerminal(), !recorded);
    const std::unique_ptr<Record> record(slot->getDataRecord());
    QCOMPARE(record != nullptr, recorded);
    if (record) {
        QCOMPARE(record->getLabel(), std::string("Door[front]"));
    }
}

void RecordsTest::aSlotOutlivesItsObject()
{
    Door* const door = Door::create("front");
    const std::unique_ptr<Slot> slot(door->_getSlot());
    door->destroy();
    QCOMPARE(slot->getDataLabel(), std::string("null"));
    QVERIFY(slot->getDataRecord() == nullptr);
    QVERIFY(slot->isTerminal());
}

void RecordsTest::aNewRecordIsEmpty()
{
    Record record("label");
    QCOMPARE(record.getLabel(), std::string("label"));
    QVERIFY(!record.isExpanded());
    QVERIFY(record.getSlots().isEmpty());
    record.setExpanded(true);
    QVERIFY(record.isExpanded());
}

void RecordsTest::aHeaderIsALineOfTheRecord()
{
    Record record("label");
    record.addHeader("Door");
    QCOMPARE(describe(record), QStringList{"#Door"});
    const Slot* const header = record.getSlots().getFirst();
    QVERIFY(header->isTerminal());
    QVERIFY(header->getDataRecord() == nullptr);
}

void RecordsTest::anObjectFillsItsRecordInOrder()
{
    const OwnedDoor door(Door::create("front"));
    const std::unique_ptr<Record> record(door->_getRecord());
    QCOMPARE(record->getLabel(), std::string("Door[front]"));
    QVERIFY(!record->isExpanded());
    QCOMPARE(describe(*record), (QStringList{"#Door", "Number=7", "Name=front"}));
}

void RecordsTest::anObjectWithoutRecordGivesNull()
{
    const OwnedDoor door(Door::create("front"));
    door->recorded = false;
    QVERIFY(door->_getRecord() == nullptr);
}

void RecordsTest::aSlotHoldsACopyOfItsValue_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << "0";
    QTest::newRow("positive") << 41 << "41";
    QTest::newRow("negative") << -1 << "-1";
}

void RecordsTest::aSlotHoldsACopyOfItsValue()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    const std::unique_ptr<Slot> slot(getSlot(value));
    value = 99;
    QCOMPARE(QString::fromStdString(slot->getDataLabel()), text);
    QVERIFY(slot->getDataRecord() == nullptr);
    QVERIFY(slot->isTerminal());
    QVERIFY(!slot->isHeader());
    QVERIFY(slot->_getLabel().empty());
}

void RecordsTest::aSlotHoldsACopyOfAText()
{
    std::string text("board list");
    const std::unique_ptr<Slot> slot(getSlot(text));
    text = "other";
    QCOMPARE(slot->getDataLabel(), std::string("board list"));
    slot->setName("Command");
    QCOMPARE(slot->_getLabel(), std::string("Command"));
}

void RecordsTest::aRecordDeletesItsSlots()
{
    int ended = 0;
    {
        Record record("label");
        (new NotedSlot(ended))->setOwner(&record);
        (new NotedSlot(ended))->setOwner(&record);
        QCOMPARE(ended, 0);
    }
    QCOMPARE(ended, 2);
}

void RecordsTest::aDeletedSlotLeavesItsRecord()
{
    int ended = 0;
    Record record("label");
    auto* const slot = new NotedSlot(ended);
    slot->setOwner(&record);
    delete slot;
    QVERIFY(record.getSlots().isEmpty());
}

void RecordsTest::aSlotMovesFromRecordToRecord()
{
    int ended = 0;
    Record first("first");
    {
        Record second("second");
        auto* const slot = new NotedSlot(ended);
        slot->setOwner(&second);
        slot->setOwner(&second);
        QCOMPARE(second.getSlots().getCount(), 1UL);
        slot->setOwner(&first);
        QVERIFY(second.getSlots().isEmpty());
    }
    QCOMPARE(ended, 0);
    QCOMPARE(first.getSlots().getCount(), 1UL);
}

void RecordsTest::aSlotWithoutOwnerBelongsToTheCaller()
{
    int ended = 0;
    Record record("label");
    const std::unique_ptr<Slot> slot(new NotedSlot(ended));
    slot->setOwner(&record);
    slot->setOwner(nullptr);
    QVERIFY(record.getSlots().isEmpty());
}

void RecordsTest::theSlotsOfARecordAreALiveView()
{
    Record record("label");
    const Collection<Slot*> view = record.getSlots();
    record.addHeader("Door");
    QCOMPARE(view.getCount(), 1UL);
}

QTEST_APPLESS_MAIN(RecordsTest)
#include "tst_records.moc"
