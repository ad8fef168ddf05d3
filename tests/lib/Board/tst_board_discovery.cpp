#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Locator.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>

#include <QComboBox>
#include <QTimer>

#include <memory>

using Board::KSBaseHandler;
using Board::Tamsa;
using Test::Bench;
using Test::CommandType;

namespace
{

/// The bring-up of a board of that index, without the restored selection.
QStringList bringUp(int index)
{
    return {QString("board select %1").arg(index), "board set mode 'Jtag only'",
            "board set jtag_clock on", "board set reset on", "board set reset off"};
}

} // namespace

/// The mirror of the tool's boards.
class TestBoardDiscovery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aListingWithoutBoardsChangesNothing();
    void theSameListingTwiceDoesNothingTheSecondTime();
    void aTickDuringAPassIsLost();
    void aDirectCallLeavesTheTimerAlone();
    void aPassOfTheTimerSetsItsInterval();
    void boardsStandInTheOrderOfTheirNames();
    void theStarSelects();
    void theLastStarWins();
    void twoLinesOfOneNameAreOneBoard();
    void newBoardsAreBroughtUpInTheOrderOfTheirLines();
    void aVanishedBoardCountsUntilTheNewOnesAreServed();
    void aVanishedSelectionLeavesNone();
    void aListingWithoutAStarSelectsNothing();
    void aChangeOfTheStarAloneMovesTheSelectionOnly();
    void aFailedListingIsAListingWithoutBoards();
    void aBoardThatMissesAListingComesBackNew();
    void theIndexIsThePositionOfTheWholeName_data();
    void theIndexIsThePositionOfTheWholeName();
    void anUnknownBoardIsNull();
    void aSelectionIsConfirmed();
    void aRefusedSelectionKeepsTheOldOne();
    void anUnknownNameIsSentAsMinusOne();
    void anAcceptedUnknownSelectionSelectsNothing();
    void aBoardRefusesItsArguments_data();
    void aBoardRefusesItsArguments();
    void theArgumentsAreTestedInOrder();
    void aBoardBeginsWithItsBitsOff();
    void storingABitSendsNothing();
    void aBoardTellsItsRecord();
    void attachReplacesAndDetachForgets();
    void aLineWithoutANameStopsAllLaterPasses();
    void garbageListsNothing();
    void manyLinesListTheirBoards();
    void oddNamesAreKept_data();
    void oddNamesAreKept();
    void aSelectionDuringThePassDoesNotDangle();
    void aPassWaitsBehindTheUsersCommands();

private:
    void refresh() { panel->getEngine()->refreshTamsaMap(); }
    void list(const QString& scenario)
    {
        bench->setScenario(scenario);
        refresh();
    }
    /// A listing as the tool would write it.
    static QString listing(const QString& lines)
    {
        return Bench::reply("board list", lines + "COMMAND SUCCEEDED\n");
    }
    QStringList getNames() const
    {
        QStringList names;
        for (Orvex::Locator<Tamsa*> at = panel->getEngine()->getTamsas().getLocator(); at.isValid();
             at.progress()) {
            names += QString::fromStdString(at.getCurrent()->getName());
        }
        return names;
    }
    QString getSelected() const
    {
        const Tamsa* const selected = panel->getEngine()->getSelectedTamsa();
        return selected == nullptr ? QString() : QString::fromStdString(selected->getName());
    }
    void makePanel()
    {
        panel = std::make_unique<Test::Panel>();
        bench->takeJournal();
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::Panel> panel;
};

void TestBoardDiscovery::init()
{
    bench = std::make_unique<Bench>();
}

void TestBoardDiscovery::cleanup()
{
    bench->release();
    panel.reset();
    bench.reset();
}

void TestBoardDiscovery::aListingWithoutBoardsChangesNothing()
{
    makePanel();
    Test::ConsoleRecorder recorder;
    auto* const box = panel->getFolio()->findChild<QComboBox*>();
    box->setItemText(0, "untouched");
    refresh();
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(bench->takeJournal(), QStringList({"board list"}));
    QCOMPARE(getNames(), QStringList());
    QCOMPARE(getSelected(), QString());
    QCOMPARE(box->itemText(0), QString("untouched"));
    QVERIFY(!panel->getEngine()->isRefreshing());
}

void TestBoardDiscovery::theSameListingTwiceDoesNothingTheSecondTime()
{
    bench->setScenario(Bench::board("Aurora") + Bench::board("Borealis"));
    makePanel();
    const Tamsa* const aurora = panel->getEngine()->getTamsa("Aurora");
    Test::ConsoleRecorder recorder;
    refresh();
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(bench->takeJournal(), QStringList({"board list"}));
    QCOMPARE(panel->getEngine()->getTamsa("Aurora"), aurora);
}

void TestBoardDiscovery::aTickDuringAPassIsLost()
{
    makePanel();
    bench->setScenario(bench->hold("board list"));
    QTimer::singleShot(0, this, [this] {
        QTRY_COMPARE(bench->count("board list"), 2);
        QVERIFY(panel->getEngine()->isRefreshing());
        refresh();
        bench->release();
    });
    refresh();
    panel->run(CommandType::Control, "board get mode");
    QCOMPARE(bench->takeJournal(), QStringList({"board list", "board get mode"}));
}

void TestBoardDiscovery::aDirectCallLeavesTheTimerAlone()
{
    makePanel();
    QTimer* const poll = panel->getPollTimer();
    poll->setInterval(7000);
    refresh();
    QCOMPARE(poll->interval(), 7000);
}

void TestBoardDiscovery::aPassOfTheTimerSetsItsInterval()
{
    makePanel();
    QTimer* const poll = panel->getPollTimer();
    poll->start(1);
    QTRY_COMPARE(poll->interval(), 5000);
    QVERIFY(poll->isActive());
    QTRY_VERIFY(!panel->getEngine()->isRefreshing());
    QCOMPARE(bench->takeJournal(), QStringList({"board list"}));
    poll->stop();
}

void TestBoardDiscovery::boardsStandInTheOrderOfTheirNames()
{
    bench->setScenario(listing("- 0x534B1 b\n- 0x534B2 a b\n- 0x534B3 \u00e9\n- 0x534B4 a\n"
                               "- 0x534B5 B\n"));
    makePanel();
    // Byte by byte, the shorter one first.
    QCOMPARE(getNames(), QStringList({"B", "a", "a b", "b", "\u00e9"}));
}

void TestBoardDiscovery::theStarSelects()
{
    bench->setScenario(Bench::board("Aurora") + Bench::board("Borealis", "selected = true"));
    makePanel();
    QCOMPARE(getSelected(), QString("Borealis"));
}

void TestBoardDiscovery::theLastStarWins()
{
    makePanel();
    list(listing(" * 0x534B1 a\n* 0x534B2 b\n- 0x534B3 c\n") +
         Bench::reply("board select", "no\nCOMMAND FAILED\n"));
    QCOMPARE(getSelected(), QString("b"));
}

void TestBoardDiscovery::twoLinesOfOneNameAreOneBoard()
{
    makePanel();
    Test::ConsoleRecorder recorder;
    list(listing("- 0x534B1 1 2 3 4 5 6 7\n- 0x534B2 1 2 3 4 5 6 8\n"));
    QCOMPARE(getNames(), QStringList({"1 2 3 4 5 6"}));
    QCOMPARE(recorder.getLines().count("Connected 1 2 3 4 5 6"), 1);
    recorder.clear();
    refresh();
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestBoardDiscovery::newBoardsAreBroughtUpInTheOrderOfTheirLines()
{
    makePanel();
    Test::ConsoleRecorder recorder;
    list(listing("- 0x534B1 b\n* 0x534B2 c\n- 0x534B3 a\n"));
    const QStringList connected = recorder.getLines().filter("Connected");
    QCOMPARE(connected, QStringList({"Connected b", "Connected c", "Connected a"}));
    // The pages read the first board afterwards.
    QCOMPARE(bench->takeJournal().mid(0, 18), QStringList({"board list"}) + bringUp(1) +
                                                  QStringList({"board select 2"}) + bringUp(2) +
                                                  bringUp(0) + QStringList({"board select 2"}));
    QCOMPARE(getSelected(), QString("c"));
}

void TestBoardDiscovery::aVanishedBoardCountsUntilTheNewOnesAreServed()
{
    makePanel();
    list(listing("* 0x534B1 a\n"));
    bench->takeJournal();
    Test::ConsoleRecorder recorder;
    list(listing("* 0x534B2 b\n"));
    // The listing of the scenario before is asked once more: it is read at each listing anew.
    QCOMPARE(bench->takeJournal(), QStringList({"board list"}) + bringUp(1));
    const QStringList lines = recorder.getLines().filter("onnected");
    QCOMPARE(lines, QStringList({"Connected b", "Disconnected a"}));
    QCOMPARE(getNames(), QStringList({"b"}));
    QCOMPARE(panel->getEngine()->getIndex("b"), 0);
}

void TestBoardDiscovery::aVanishedSelectionLeavesNone()
{
    bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis"));
    makePanel();
    QCOMPARE(getSelected(), QString("Aurora"));
    Test::ConsoleRecorder recorder;
    list(listing("- 0x534B1 Borealis\n"));
    QCOMPARE(getSelected(), QString());
    QCOMPARE(getNames(), QStringList({"Borealis"}));
    QCOMPARE(recorder.getLines(), QStringList({"Disconnected Aurora"}));
}

void TestBoardDiscovery::aListingWithoutAStarSelectsNothing()
{
    makePanel();
    list(listing("* 0x534B1 a\n- 0x534B2 b\n"));
    QCOMPARE(getSelected(), QString("a"));
    Test::ConsoleRecorder recorder;
    list(listing("- 0x534B1 a\n- 0x534B2 b\n"));
    QCOMPARE(getSelected(), QString());
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestBoardDiscovery::aChangeOfTheStarAloneMovesTheSelectionOnly()
{
    makePanel();
    list(listing("* 0x534B1 a\n- 0x534B2 b\n"));
    auto* const box = panel->getFolio()->findChild<QComboBox*>();
    QCOMPARE(box->currentText(), QString("a"));
    list(listing("- 0x534B1 a\n* 0x534B2 b\n"));
    QCOMPARE(getSelected(), QString("b"));
    QCOMPARE(box->currentText(), QString("a"));
}

void TestBoardDiscovery::aFailedListingIsAListingWithoutBoards()
{
    bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis"));
    makePanel();
    Test::ConsoleRecorder recorder;
    list(Bench::reply("board list", "Error: the bus is down\nCOMMAND FAILED\n"));
    QCOMPARE(recorder.getLines(), QStringList({"Disconnected Aurora", "Disconnected Borealis"}));
    QCOMPARE(getNames(), QStringList());
    QCOMPARE(getSelected(), QString());
    QCOMPARE(panel->getFolio()->findChild<QComboBox*>()->currentText(),
             QString("No card detected !"));
}

void TestBoardDiscovery::aBoardThatMissesAListingComesBackNew()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel();
    panel->getEngine()->setResetBit(true);
    QVERIFY(panel->getEngine()->getTamsa("Aurora")->getResetBit());
    list({});
    Test::ConsoleRecorder recorder;
    list(Bench::board("Aurora", "selected = true"));
    QCOMPARE(recorder.getLines().first(), QString("Connected Aurora"));
    QVERIFY(!panel->getEngine()->getTamsa("Aurora")->getResetBit());
}

void TestBoardDiscovery::theIndexIsThePositionOfTheWholeName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << "Aurora" << 0;
    QTest::newRow("second") << "Aurora Two" << 1;
    QTest::newRow("third") << "Borealis" << 2;
    QTest::newRow("prefix of one") << "Aur" << -1;
    QTest::newRow("longer than one") << "Borealis Two" << -1;
    QTest::newRow("another case") << "aurora" << -1;
    QTest::newRow("empty") << "" << -1;
}

void TestBoardDiscovery::theIndexIsThePositionOfTheWholeName()
{
    QFETCH(QString, name);
    bench->setScenario(Bench::board("Borealis") + Bench::board("Aurora Two") +
                       Bench::board("Aurora"));
    makePanel();
    QTEST(panel->getEngine()->getIndex(name.toStdString()), "index");
}

void TestBoardDiscovery::anUnknownBoardIsNull()
{
    bench->setScenario(Bench::board("Aurora"));
    makePanel();
    QCOMPARE(panel->getEngine()->getTamsa(""), nullptr);
    QCOMPARE(panel->getEngine()->getTamsa("Aur"), nullptr);
    QVERIFY(panel->getEngine()->getTamsa("Aurora") != nullptr);
}

void TestBoardDiscovery::aSelectionIsConfirmed()
{
    bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis"));
    makePanel();
    Test::ConsoleRecorder recorder;
    panel->getEngine()->select("Borealis");
    QCOMPARE(bench->takeJournal(), QStringList({"board select 1"}));
    QCOMPARE(recorder.getLines(), QStringList({"Board succesfully selected"}));
    QCOMPARE(getSelected(), QString("Borealis"));
}

void TestBoardDiscovery::aRefusedSelectionKeepsTheOldOne()
{
    bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis"));
    makePanel();
    list(Bench::board("Aurora", "selected = true") + Bench::board("Borealis") +
         Bench::fault("board select", "kind = \"refused\"\nmessage = \"no\"\ntimes = 0"));
    Test::ConsoleRecorder recorder;
    panel->getEngine()->select("Borealis");
    QCOMPARE(recorder.getLines(), QStringList({"E: Selection failed"}));
    QCOMPARE(getSelected(), QString("Aurora"));
}

void TestBoardDiscovery::anUnknownNameIsSentAsMinusOne()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel();
    Test::ConsoleRecorder recorder;
    panel->getEngine()->select("nobody");
    QCOMPARE(bench->takeJournal(), QStringList({"board select -1"}));
    QCOMPARE(recorder.getLines(), QStringList({"E: Selection failed"}));
    QCOMPARE(getSelected(), QString("Aurora"));
}

void TestBoardDiscovery::anAcceptedUnknownSelectionSelectsNothing()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel();
    list(Bench::board("Aurora", "selected = true") +
         Bench::reply("board select", "OK\nCOMMAND SUCCEEDED\n"));
    Test::ConsoleRecorder recorder;
    panel->getEngine()->select("nobody");
    QCOMPARE(recorder.getLines(), QStringList({"Board succesfully selected"}));
    QCOMPARE(getSelected(), QString());
}

void TestBoardDiscovery::aBoardRefusesItsArguments_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasEngine");
    QTest::addColumn<QString>("message");
    QTest::newRow("name") << "" << true << "Empty name";
    QTest::newRow("engine") << "Borealis" << false << "Null ksBaseHandler";
    QTest::newRow("known") << "Aurora" << true << "Already exists";
}

void TestBoardDiscovery::aBoardRefusesItsArguments()
{
    QFETCH(QString, name);
    QFETCH(bool, hasEngine);
    QFETCH(QString, message);
    bench->setScenario(Bench::board("Aurora"));
    makePanel();
    const Tamsa* const known = panel->getEngine()->getTamsa("Aurora");
    try {
        Tamsa::create(name.toStdString(), hasEngine ? panel->getEngine() : nullptr);
        QFAIL("nothing was refused");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains(message));
        QCOMPARE(failure.getFunction(), std::string("preCreate"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/Tamsa"));
    }
    QCOMPARE(getNames(), QStringList({"Aurora"}));
    QCOMPARE(panel->getEngine()->getTamsa("Aurora"), known);
}

void TestBoardDiscovery::theArgumentsAreTestedInOrder()
{
    try {
        Tamsa::preCreate("", nullptr);
        QFAIL("nothing was refused");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Empty name"));
    }
}

void TestBoardDiscovery::aBoardBeginsWithItsBitsOff()
{
    makePanel();
    Tamsa* const tamsa = Tamsa::create("Aurora", panel->getEngine());
    QCOMPARE(tamsa->getName(), std::string("Aurora"));
    QVERIFY(!tamsa->getResetBit());
    QVERIFY(!tamsa->getClockBit());
    QVERIFY(tamsa->parent() == nullptr);
    QCOMPARE(getNames(), QStringList({"Aurora"}));
    tamsa->destroy();
    QCOMPARE(getNames(), QStringList());
}

void TestBoardDiscovery::storingABitSendsNothing()
{
    makePanel();
    Tamsa* const tamsa = Tamsa::create("Aurora", panel->getEngine());
    tamsa->setResetBit(true);
    QVERIFY(tamsa->getResetBit());
    QVERIFY(!tamsa->getClockBit());
    tamsa->setClockBit(true);
    tamsa->setResetBit(false);
    QVERIFY(!tamsa->getResetBit());
    QVERIFY(tamsa->getClockBit());
    tamsa->destroy();
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
}

void TestBoardDiscovery::aBoardTellsItsRecord()
{
    makePanel();
    Tamsa* const tamsa = Tamsa::create("Aurora", panel->getEngine());
    QCOMPARE(tamsa->getAlias(), std::string("Tamsa[Aurora]"));
    QCOMPARE(tamsa->_getLabel(), std::string("Tamsa[Aurora]"));
    QVERIFY(tamsa->_hasRecord());
    const std::unique_ptr<Orvex::Slot> slot(tamsa->_getSlot());
    QCOMPARE(slot->getDataLabel(), std::string("Tamsa[Aurora]"));
    QVERIFY(!slot->isTerminal());
    const std::unique_ptr<Orvex::Record> record(slot->getDataRecord());
    QCOMPARE(record->getLabel(), std::string("Tamsa[Aurora]"));
    QCOMPARE(record->getSlots().getCount(), 1UL);
    QCOMPARE(record->getSlots().getFirst()->getDataLabel(), std::string("Tamsa"));
    const QMetaObject& meta = Tamsa::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    tamsa->destroy();
}

void TestBoardDiscovery::attachReplacesAndDetachForgets()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel();
    KSBaseHandler* const engine = panel->getEngine();
    Tamsa* const aurora = engine->getTamsa("Aurora");
    engine->detach(aurora);
    QCOMPARE(engine->getTamsa("Aurora"), nullptr);
    QCOMPARE(engine->getSelectedTamsa(), aurora);
    engine->detach(aurora);
    engine->attach(aurora);
    QCOMPARE(engine->getTamsa("Aurora"), aurora);
    QCOMPARE(getNames(), QStringList({"Aurora"}));
}

void TestBoardDiscovery::aLineWithoutANameStopsAllLaterPasses()
{
    makePanel();
    Test::ConsoleRecorder recorder;
    bench->setScenario(listing("- 0x534B1 a\n- 0x534B2\n- 0x534B3 c\n"));
    try {
        refresh();
        QFAIL("a board without a name was taken");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Empty name"));
    }
    QVERIFY(panel->getEngine()->isRefreshing());
    // The lines before it count; nothing was told nor brought up.
    QCOMPARE(getNames(), QStringList({"a"}));
    QCOMPARE(recorder.getLines(), QStringList());
    bench->takeJournal();
    refresh();
    QCOMPARE(bench->takeJournal(), QStringList());
}

void TestBoardDiscovery::garbageListsNothing()
{
    bench->setTool(
        "#!/bin/sh\nwhile read -r line; do head -c 100000 /dev/urandom | tr -d '\\000' >&2;"
        " echo 'COMMAND SUCCEEDED' >&2; done\n");
    makePanel();
    for (int round = 0; round < 5; ++round) {
        refresh();
        QCOMPARE(getNames(), QStringList());
    }
}

void TestBoardDiscovery::manyLinesListTheirBoards()
{
    bench->setTool("#!/bin/sh\nwhile read -r line; do\n"
                   "[ \"$line\" = 'board list' ] && cat listing >&2\n"
                   "echo 'Forcebit is set, OK, COMMAND SUCCEEDED' >&2; done\n");
    bench->writeFile("listing", QByteArray("- 0x534B1 a\nno board\n* 0x534B2 b\n").repeated(3334));
    panel = std::make_unique<Test::Panel>();
    QCOMPARE(getNames(), QStringList({"a", "b"}));
    Test::ConsoleRecorder recorder;
    refresh();
    QCOMPARE(getSelected(), QString("b"));
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestBoardDiscovery::oddNamesAreKept_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << "<b>bold</b> &amp;";
    QTest::newRow("accents") << "\u00e0 \u00c5ngstr\u00f6m \u65e5\u672c";
    QTest::newRow("one character") << "A";
    QTest::newRow("percent") << "%1 %n";
    QTest::newRow("long") << QString(10000, 'x');
}

void TestBoardDiscovery::oddNamesAreKept()
{
    QFETCH(QString, name);
    makePanel();
    Test::ConsoleRecorder recorder;
    list(listing("* 0x534B1 " + name + "\n"));
    QCOMPARE(recorder.getLines().first(), "Connected " + name);
    QCOMPARE(getNames(), QStringList({name}));
    // As the item of the box shows it, it finds its board again.
    auto* const box = panel->getFolio()->findChild<QComboBox*>();
    QCOMPARE(box->currentText().toLatin1(), name.toUtf8());
}

void TestBoardDiscovery::aSelectionDuringThePassDoesNotDangle()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel();
    const QString hold = bench->hold("board set mode");
    bench->setScenario(Bench::board("Borealis") + hold);
    // The new board is being brought up; the one that has gone still stands in the map.
    Test::when(
        this, [this] { return bench->count("board set mode 'Jtag only'") == 2; },
        [this] {
            Test::when(
                this, [this] { return panel->getEngine()->getCommandHandlers().getCount() == 2; },
                [this] { bench->release(); });
            panel->getEngine()->select("Aurora");
        });
    refresh();
    QCOMPARE(getNames(), QStringList({"Borealis"}));
    panel->getEngine()->getResetBit();
    QVERIFY(getSelected().isEmpty() || getSelected() == "Borealis");
}

void TestBoardDiscovery::aPassWaitsBehindTheUsersCommands()
{
    makePanel();
    bench->setScenario(bench->hold("board get force_bit"));
    refresh();
    bench->takeJournal();
    Board::CommandHandler* const user = Board::CommandHandler::create(
        CommandType::Control, "board get force_bit", panel->getEngine());
    QTRY_VERIFY(user->isRunning());
    QTimer::singleShot(0, this, [this] {
        Board::CommandHandler* const second = Board::CommandHandler::create(
            CommandType::Control, "board get mode", panel->getEngine());
        bench->release();
        QTRY_VERIFY(second->hasFinished());
        second->destroy();
    });
    refresh();
    QCOMPARE(bench->takeJournal(),
             QStringList({"board get force_bit", "board get mode", "board list"}));
    user->destroy();
}

KESTOBOARD_TEST_MAIN(TestBoardDiscovery)

#include "tst_board_discovery.moc"
