#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>
#include <Board/Tamsa.h>
#include <foundation/Fatal.h>
#include <foundation/InvalidRequest.h>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>
#include <QTimer>

#include <functional>

using Board::MonitoringLeaf;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::doInNextWait;
using Test::doOnceReceived;
using Test::FragilePanel;
using Test::getNamed;
using Test::Panel;
using Test::setScenario;
using Test::takeCommands;

namespace
{

const QString monitorCommand = "board monitor get 0";
const QString refreshing = "Refreshing monitoring table";
const QStringList headings = {"0,0 1x1 QLabel '<b>Channel</b>'", "0,1 1x1 QLabel '<b>Voltage</b>'",
                              "0,2 1x1 QLabel '<b>Current</b>'"};

QString boardA()
{
    return Bench::board("KS-Dev A", "selected = true");
}

// A reply of exactly these bytes and its mark, to every monitoring read.
QString monitor(const QByteArray& lines)
{
    return Bench::fault("board monitor get", "kind = \"reply\"\ntimes = 0\nhex = \"" +
                                                 (lines + "COMMAND SUCCEEDED\n").toHex() + "\"");
}

QWidget* getTable(const QObject& root)
{
    return getNamed<QWidget>(root, "monitoringWidget");
}

QTimer* getTimer(const MonitoringLeaf& leaf)
{
    return leaf.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
}

// The rows below the headings as "channel|voltage|current".
QStringList getRows(const MonitoringLeaf& leaf)
{
    const auto* grid = qobject_cast<QGridLayout*>(getTable(leaf)->layout());
    QStringList rows;
    for (int row = 2; row < grid->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column) {
            QLayoutItem* item = grid->itemAtPosition(row, column);
            auto* label = item != nullptr ? qobject_cast<QLabel*>(item->widget()) : nullptr;
            cells += label != nullptr ? label->text() : QString();
        }
        rows += cells.join('|');
    }
    while (!rows.isEmpty() && rows.last() == "||") {
        rows.removeLast();
    }
    return rows;
}

int countLabels(const MonitoringLeaf& leaf)
{
    return getTable(leaf)->findChildren<QLabel*>().size();
}

void tick(const MonitoringLeaf& leaf)
{
    QMetaObject::invokeMethod(getTimer(leaf), "timeout");
}

// The function that an InvalidRequest with the text "Empty name" names; empty without one.
QString getRefuser(const std::function<void()>& work)
{
    try {
        work();
    } catch (const Orvex::InvalidRequest& failure) {
        if (failure.getMessage().find("Empty name") == 0) {
            return QString::fromStdString(failure.getFunction());
        }
    }
    return {};
}

} // namespace

class TestMonitoringLeaf : public QObject
{
    Q_OBJECT

private slots:
    void theFormStandsInItsGrid();
    void theSlotsStandInTheirOrder();
    void withoutABoardOnlyTheHeadingsStandAndNothingIsSent();
    void theReplyBecomesTheTable_data();
    void theReplyBecomesTheTable();
    void anEmptyValueIsAVoltageWithoutText();
    void aCharacterInTwoChunksComesOutWhole();
    void theChannelsAreALiveView();

    void theIntervalIsTenSecondsAtTheStart();
    void theIntervalCannotLeaveItsRange();
    void theTimerRunsOnlyWhileThePageShows();
    void aChangedIntervalRestartsTheRunningPeriod();
    void aTickFillsTheTable();

    void aFillWritesNewTextsIntoTheSameLabels();
    void aFillPassesOverWhatHasNoLabel_data();
    void aFillPassesOverWhatHasNoLabel();
    void aFillWithOneValueLeavesTheCurrent();
    void withoutABoardAFillIsSilent();
    void theTableKeepsItsValuesWhenTheBoardGoes();
    void ticksInTheWaitOfAFillAreLost();
    void aSecondFillInTheWaitOfTheFirstSendsNothing();
    void hidingThePageInTheWaitOfAFillLetsItFinish();
    void aBoardThatVanishesInTheWaitOfAFillIsNoHarm();
    void initializingInTheWaitOfAFillLeavesTheHeadings();
    void aFillInTheWaitOfAnInitializationGetsNothing();

    void initializingReplacesTheTable();
    void aRepeatedNameKeepsItsLastLabels();
    void generatingAloneDeletesTheOldValues();
    void layingOutTwiceLeavesTheNames();
    void aForeignLayoutIsReplaced();
    void withoutItsContainerTheTableIsRefused();
    void aChannelWithoutANameLeavesTheTableIncomplete();
    void aFillWithAChannelWithoutANameBlocksTheTimer();
    void aTickThatFailsReachesTheApplicationAndIsTheLast();
    void anEmptyNameHasNoLabel();
    void anUnknownNameHasNoLabel();

    void aRefusedReadIsAFalseRow();
    void aReplyOfTenMegabytesIsRead();
    void aReplyOfThousandsOfChannelsIsShown();
    void withoutAFolioNothingHappens();
    void theWindowMayBeDeletedInTheWaitOfAFill();
    void theWindowMayBeDeletedInTheWaitOfAnInitialization();
};

void TestMonitoringLeaf::theFormStandsInItsGrid()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    QCOMPARE(Test::describeGrid(leaf),
             QStringList({"0,0 1x1 QLabel 'Refresh interval (seconds)'",
                          "0,1 1x1 QSpinBox intervalSpinBox", "2,0 1x3 QLabel 'Monitoring<hr />'",
                          "3,0 1x3 QWidget monitoringWidget"}));
    QCOMPARE(Test::describeMetrics(leaf), QStringList({"spacing: 4", "column stretch 1: 1",
                                                       "row minimum 1: 20", "row stretch 4: 1"}));
    QStringList metrics = Test::describeMetrics(*getTable(leaf));
    metrics.removeFirst();
    QCOMPARE(metrics,
             QStringList({"column minimum 0: 150", "column minimum 1: 150", "column minimum 2: 150",
                          "column stretch 3: 1", "row minimum 1: 20"}));
}

void TestMonitoringLeaf::theSlotsStandInTheirOrder()
{
    QCOMPARE(
        Test::describeMethods(MonitoringLeaf::staticMetaObject),
        QStringList({"public slot fillMonitoringTable()", "public slot onIntervalChanged(int)"}));
}

void TestMonitoringLeaf::withoutABoardOnlyTheHeadingsStandAndNothingIsSent()
{
    Bench bench;
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    leaf->initialize();
    QCOMPARE(Test::describeGrid(*getTable(*leaf)), headings);
    QVERIFY(leaf->getMonitoringChannels().isEmpty());
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestMonitoringLeaf::theReplyBecomesTheTable_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("rows");
    using Bytes = QByteArray;
    using Rows = QStringList;

    QTest::newRow("no line") << Bytes("") << Rows();
    QTest::newRow("two values") << Bytes("VCore: 1.00V 0.35A\n") << Rows("VCore|1.00V|0.35A");
    QTest::newRow("one value") << Bytes("Temperature: 41.5\n") << Rows("Temperature|41.5|");
    QTest::newRow("one value is UTF-8")
        << Bytes("T: 41\xC2\xB0\n") << Rows("T|" + QString::fromUtf8("41\xC2\xB0") + "|");
    QTest::newRow("two values are bytes")
        << Bytes("T: 41\xC2\xB0 7\n") << Rows("T|" + QString::fromLatin1("41\xC2\xB0") + "|7");
    QTest::newRow("the second value is bytes")
        << Bytes("T: 7 41\xC2\xB0\n") << Rows("T|7|" + QString::fromLatin1("41\xC2\xB0"));
    QTest::newRow("a name is bytes") << Bytes("\xC3\x89t\xC3\xA9: 7\n")
                                     << Rows(QString::fromLatin1("\xC3\x89t\xC3\xA9") + "|7|");
    QTest::newRow("three values") << Bytes("V: 1 2 3\n") << Rows("V||");
    QTest::newRow("a double blank is one piece more") << Bytes("V: 1  2\n") << Rows("V||");
    QTest::newRow("a blank at the end is one piece more") << Bytes("V: 1 \n") << Rows("V|1|");
    QTest::newRow("carriage return") << Bytes("V: 1\r\n") << Rows("V|1\r|");
    QTest::newRow("blanks in a name") << Bytes("Core supply : 1\n") << Rows("Core supply |1|");
    QTest::newRow("no separator") << Bytes("Supplies of the board\n") << Rows();
    QTest::newRow("a colon without a blank") << Bytes("V:1\n") << Rows();
    QTest::newRow("two separators") << Bytes("V: core: 1\n") << Rows();
    QTest::newRow("an error of one word counts")
        << Bytes("Error: refused\n") << Rows("Error|refused|");
    QTest::newRow("empty lines are skipped")
        << Bytes("\nA: 1\n\n\nB: 2 3\n\n") << Rows({"A|1|", "B|2|3"});
    QTest::newRow("the order is that of the reply")
        << Bytes("Z: 1\nA: 2\nM: 3\n") << Rows({"Z|1|", "A|2|", "M|3|"});
}

void TestMonitoringLeaf::theReplyBecomesTheTable()
{
    QFETCH(QByteArray, reply);
    QFETCH(QStringList, rows);
    Bench bench;
    bench.setScenario(boardA() + monitor(reply));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();

    // Rows without any text at their end are not told apart from no rows: name the channels too.
    QStringList expectedNames;
    for (const QString& row : rows) {
        expectedNames += row.section('|', 0, 0);
    }
    QStringList names;
    const auto* grid = qobject_cast<QGridLayout*>(getTable(*leaf)->layout());
    for (int row = 2; row < grid->rowCount(); ++row) {
        QVERIFY(grid->itemAtPosition(row, 0) != nullptr);
        QCOMPARE(grid->itemAtPosition(row, 0)->alignment(), Qt::Alignment());
        names += qobject_cast<QLabel*>(grid->itemAtPosition(row, 0)->widget())->text();
    }
    QCOMPARE(names, expectedNames);
    QCOMPARE(leaf->getMonitoringChannels().getCount(), static_cast<unsigned long>(rows.size()));
    QCOMPARE(getRows(*leaf), rows);
    // A fill reads the same reply in the same way.
    leaf->fillMonitoringTable();
    QCOMPARE(getRows(*leaf), rows);
}

void TestMonitoringLeaf::anEmptyValueIsAVoltageWithoutText()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: \n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    QVERIFY(leaf->getMonitoringVoltageLabel("V") != nullptr);
    QCOMPARE(leaf->getMonitoringVoltageLabel("V")->text(), QString());
    QVERIFY(leaf->getMonitoringCurrentLabel("V") == nullptr);
}

void TestMonitoringLeaf::aCharacterInTwoChunksComesOutWhole()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("T: 41\xC2\xB0\n") +
                      Bench::fault("board monitor get", "kind = \"split\"\nevery = 1\ntimes = 0"));
    Panel panel;
    QCOMPARE(getRows(*panel.find<MonitoringLeaf>()),
             QStringList("T|" + QString::fromUtf8("41\xC2\xB0") + "|"));
}

void TestMonitoringLeaf::theChannelsAreALiveView()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("A: 1\nB: 2\nA: 3\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    const Orvex::Collection<std::string> channels = leaf->getMonitoringChannels();
    QCOMPARE(channels.getCount(), 3UL);
    QCOMPARE(channels.getFirst(), std::string("A"));
    setScenario(&bench, panel.getEngine(), boardA() + monitor("C: 1\n"));
    leaf->generateMonitoringLabels();
    QCOMPARE(channels.getCount(), 1UL);
    QCOMPARE(channels.getFirst(), std::string("C"));
}

void TestMonitoringLeaf::theIntervalIsTenSecondsAtTheStart()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    QCOMPARE(getNamed<QSpinBox>(leaf, "intervalSpinBox")->value(), 10);
    QCOMPARE(getTimer(leaf)->interval(), 10000);
    QVERIFY(!getTimer(leaf)->isSingleShot());
    QVERIFY(!getTimer(leaf)->isActive());
}

void TestMonitoringLeaf::theIntervalCannotLeaveItsRange()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    auto* spinBox = getNamed<QSpinBox>(leaf, "intervalSpinBox");
    spinBox->setValue(31);
    QCOMPARE(spinBox->value(), 30);
    QCOMPARE(getTimer(leaf)->interval(), 30000);
    spinBox->setValue(4);
    QCOMPARE(spinBox->value(), 5);
    QCOMPARE(getTimer(leaf)->interval(), 5000);
    spinBox->selectAll();
    QTest::keyClicks(spinBox, "77");
    QTest::keyClick(spinBox, Qt::Key_Return);
    QVERIFY(spinBox->value() <= 30);
}

void TestMonitoringLeaf::theTimerRunsOnlyWhileThePageShows()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    panel.getWindow()->show();
    QVERIFY(!getTimer(leaf)->isActive());
    takeCommands(&bench);

    panel.getFolio()->raiseLeaf(1);
    QVERIFY(getTimer(leaf)->isActive());
    // Showing the page does not read at once.
    QCOMPARE(takeCommands(&bench), QStringList());
    panel.getFolio()->raiseLeaf(0);
    QVERIFY(!getTimer(leaf)->isActive());
    panel.getFolio()->raiseLeaf(1);
    QVERIFY(getTimer(leaf)->isActive());
    panel.getWindow()->hide();
    QVERIFY(!getTimer(leaf)->isActive());
}

void TestMonitoringLeaf::aChangedIntervalRestartsTheRunningPeriod()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    auto* spinBox = getNamed<QSpinBox>(leaf, "intervalSpinBox");
    spinBox->setValue(20);
    QVERIFY(!getTimer(leaf)->isActive());
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(1);
    spinBox->setValue(30);
    QVERIFY(getTimer(leaf)->isActive());
    QVERIFY(getTimer(leaf)->remainingTime() > 20000);
}

void TestMonitoringLeaf::aTickFillsTheTable()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1\n"));
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(1);
    setScenario(&bench, panel.getEngine(), boardA() + monitor("V: 2\n"));
    getTimer(leaf)->setInterval(1);
    QTRY_COMPARE(getRows(leaf), QStringList("V|2|"));
    // It ticks on.
    setScenario(&bench, panel.getEngine(), boardA() + monitor("V: 3\n"));
    QTRY_COMPARE(getRows(leaf), QStringList("V|3|"));
    getTimer(leaf)->stop();
}

void TestMonitoringLeaf::aFillWritesNewTextsIntoTheSameLabels()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\nT: 3\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    const QPointer<QLabel> voltage = leaf->getMonitoringVoltageLabel("V");
    const QPointer<QLabel> current = leaf->getMonitoringCurrentLabel("V");
    setScenario(&bench, panel.getEngine(), boardA() + monitor("T: 6\nV: 4 5\n"));
    takeCommands(&bench);
    ConsoleRecorder console;

    leaf->fillMonitoringTable();
    QCOMPARE(getRows(*leaf), QStringList({"V|4|5", "T|6|"}));
    QCOMPARE(leaf->getMonitoringVoltageLabel("V"), voltage.data());
    QCOMPARE(leaf->getMonitoringCurrentLabel("V"), current.data());
    QVERIFY(voltage != nullptr && current != nullptr);
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
    QCOMPARE(console.getLines(), QStringList(refreshing));
    QVERIFY(!getTimer(*leaf)->signalsBlocked());
}

void TestMonitoringLeaf::aFillPassesOverWhatHasNoLabel_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QStringList>("rows");
    using Bytes = QByteArray;
    using Rows = QStringList;
    QTest::newRow("a new channel") << Bytes("A: 1\n") << Bytes("A: 2\nB: 3\n") << Rows("A|2|");
    QTest::newRow("a channel that is missing now")
        << Bytes("A: 1\nB: 2\n") << Bytes("B: 3\n") << Rows({"A|1|", "B|3|"});
    QTest::newRow("three values, then one")
        << Bytes("A: 1 2 3\n") << Bytes("A: 1\n") << Rows("A||");
    QTest::newRow("one value, then three")
        << Bytes("A: 1\n") << Bytes("A: 4 5 6\n") << Rows("A|1|");
    QTest::newRow("one value, then two: there is no label for the current")
        << Bytes("A: 1\n") << Bytes("A: 2 3\n") << Rows("A|2|");
    QTest::newRow("an empty reply") << Bytes("A: 1\n") << Bytes("") << Rows("A|1|");
}

void TestMonitoringLeaf::aFillPassesOverWhatHasNoLabel()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(QStringList, rows);
    Bench bench;
    bench.setScenario(boardA() + monitor(first));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), boardA() + monitor(second));
    const int labels = countLabels(*leaf);
    leaf->fillMonitoringTable();
    QStringList shown = getRows(*leaf);
    if (shown.isEmpty()) {
        shown += "A||";
    }
    QCOMPARE(shown, rows);
    QCOMPARE(countLabels(*leaf), labels);
}

void TestMonitoringLeaf::aFillWithOneValueLeavesTheCurrent()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), boardA() + monitor("V: 3\n"));
    leaf->fillMonitoringTable();
    QCOMPARE(getRows(*leaf), QStringList("V|3|2"));
    // A table built anew has no current for it.
    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList("V|3|"));
    QVERIFY(leaf->getMonitoringCurrentLabel("V") == nullptr);
}

void TestMonitoringLeaf::withoutABoardAFillIsSilent()
{
    Bench bench;
    Panel panel;
    ConsoleRecorder console;
    panel.find<MonitoringLeaf>()->fillMonitoringTable();
    QCOMPARE(console.getLines(), QStringList());
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestMonitoringLeaf::theTableKeepsItsValuesWhenTheBoardGoes()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), {});
    takeCommands(&bench);
    leaf->fillMonitoringTable();
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(getRows(*leaf), QStringList("V|1|2"));
    leaf->initialize();
    QCOMPARE(Test::describeGrid(*getTable(*leaf)), headings);
}

void TestMonitoringLeaf::ticksInTheWaitOfAFillAreLost()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board monitor get"));
    takeCommands(&bench);
    ConsoleRecorder console;

    doOnceReceived(&bench, monitorCommand, [&] {
        tick(leaf);
        tick(leaf);
        bench.release();
    });
    tick(leaf);
    QCOMPARE(console.getLines(), QStringList(refreshing));
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
    // The next one counts again.
    tick(leaf);
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
}

void TestMonitoringLeaf::aSecondFillInTheWaitOfTheFirstSendsNothing()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 2\n") + bench.hold("board monitor get"));
    takeCommands(&bench);
    ConsoleRecorder console;

    doOnceReceived(&bench, monitorCommand, [&] {
        leaf->fillMonitoringTable();
        bench.release();
    });
    leaf->fillMonitoringTable();
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
    QCOMPARE(console.getLines(), QStringList({refreshing, refreshing}));
    QCOMPARE(getRows(*leaf), QStringList("V|2|"));
}

void TestMonitoringLeaf::hidingThePageInTheWaitOfAFillLetsItFinish()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(1);
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 2\n") + bench.hold("board monitor get"));
    doOnceReceived(&bench, monitorCommand, [&] {
        panel.getFolio()->raiseLeaf(0);
        bench.release();
    });
    leaf->fillMonitoringTable();
    QCOMPARE(getRows(*leaf), QStringList("V|2|"));
    QVERIFY(!getTimer(*leaf)->isActive());
    QVERIFY(!getTimer(*leaf)->signalsBlocked());
}

void TestMonitoringLeaf::aBoardThatVanishesInTheWaitOfAFillIsNoHarm()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 2\n") + bench.hold("board monitor get"));
    doOnceReceived(&bench, monitorCommand, [&] {
        bench.setScenario({});
        doInNextWait([&] { bench.release(); });
        panel.getEngine()->refreshTamsaMap();
    });
    leaf->fillMonitoringTable();
    QVERIFY(panel.getEngine()->getTamsas().isEmpty());
    QCOMPARE(getRows(*leaf), QStringList("V|2|"));
}

void TestMonitoringLeaf::initializingInTheWaitOfAFillLeavesTheHeadings()
{
    const QString boards = boardA() + Bench::board("KS-Dev B");
    Bench bench;
    bench.setScenario(boards + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(),
                boards + monitor("V: 3 4\n") + bench.hold("board monitor get"));
    takeCommands(&bench);

    doOnceReceived(&bench, monitorCommand, [&] {
        doInNextWait([&] { bench.release(); });
        getNamed<QComboBox>(*panel.getFolio(), "cardComboBox")->setCurrentIndex(1);
    });
    leaf->fillMonitoringTable();
    QCOMPARE(takeCommands(&bench).count(monitorCommand), 1);
    QCOMPARE(Test::describeGrid(*getTable(*leaf)), headings);
    QCOMPARE(countLabels(*leaf), 3);
    QVERIFY(leaf->getMonitoringVoltageLabel("V") == nullptr);
    QVERIFY(leaf->getMonitoringCurrentLabel("V") == nullptr);

    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList("V|3|4"));
}

void TestMonitoringLeaf::aFillInTheWaitOfAnInitializationGetsNothing()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 2\n") + bench.hold("board monitor get"));
    takeCommands(&bench);
    doOnceReceived(&bench, monitorCommand, [&] {
        leaf->fillMonitoringTable();
        bench.release();
    });
    leaf->initialize();
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
    QCOMPARE(getRows(*leaf), QStringList("V|2|"));
}

void TestMonitoringLeaf::initializingReplacesTheTable()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("A: 1 2\nB: 3\nC: 4 5\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    QCOMPARE(countLabels(*leaf), 3 + 3 + 5);
    setScenario(&bench, panel.getEngine(), boardA() + monitor("D: 6 7\n"));
    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList("D|6|7"));
    QCOMPARE(countLabels(*leaf), 3 + 1 + 2);
    QVERIFY(leaf->getMonitoringVoltageLabel("A") == nullptr);
}

void TestMonitoringLeaf::aRepeatedNameKeepsItsLastLabels()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\nT: 9\nV: 3 4\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    // The labels of the name are in its last row; nothing is left over of the first ones.
    QCOMPARE(getRows(*leaf), QStringList({"V||", "T|9|", "V|3|4"}));
    QCOMPARE(countLabels(*leaf), 3 + 3 + 3);
    leaf->initialize();
    QCOMPARE(countLabels(*leaf), 3 + 3 + 3);
    leaf->fillMonitoringTable();
    QCOMPARE(getRows(*leaf), QStringList({"V||", "T|9|", "V|3|4"}));
}

void TestMonitoringLeaf::generatingAloneDeletesTheOldValues()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), {});
    leaf->generateMonitoringLabels();
    QCOMPARE(countLabels(*leaf), 3 + 1);
    QVERIFY(leaf->getMonitoringVoltageLabel("V") == nullptr);
    QVERIFY(leaf->getMonitoringCurrentLabel("V") == nullptr);
    QVERIFY(leaf->getMonitoringChannels().isEmpty());
}

void TestMonitoringLeaf::layingOutTwiceLeavesTheNames()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    // What was laid out is deleted, the value labels with it.
    leaf->createMonitoringTable();
    QCOMPARE(getRows(*leaf), QStringList("V||"));
    QVERIFY(leaf->getMonitoringVoltageLabel("V") == nullptr);
    leaf->fillMonitoringTable();
    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList("V|1|2"));
}

void TestMonitoringLeaf::aForeignLayoutIsReplaced()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    QWidget* table = getTable(*leaf);
    delete table->layout();
    const QPointer<QVBoxLayout> foreign = new QVBoxLayout(table);
    leaf->initialize();
    QVERIFY(foreign == nullptr);
    QCOMPARE(getRows(*leaf), QStringList("V|1|2"));
    QCOMPARE(qobject_cast<QGridLayout*>(table->layout())->columnMinimumWidth(2), 150);
}

void TestMonitoringLeaf::withoutItsContainerTheTableIsRefused()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    delete getTable(*leaf);
    takeCommands(&bench);
    try {
        leaf->generateMonitoringLabels();
        QFAIL("no exception");
    } catch (const Orvex::Fatal& failure) {
        QCOMPARE(QString::fromStdString(failure.getFunction()),
                 QString("generateMonitoringLabels"));
        QCOMPARE(QString::fromStdString(failure.getFile()),
                 QString("src/lib/Board/MonitoringLeaf"));
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Null monitoringWidget"));
    }
    try {
        leaf->createMonitoringTable();
        QFAIL("no exception");
    } catch (const Orvex::InvalidRequest& failure) {
        QCOMPARE(QString::fromStdString(failure.getFunction()), QString("createMonitoringTable"));
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Null monitoringWidget"));
    }
    QVERIFY_EXCEPTION_THROWN(leaf->initialize(), Orvex::Fatal);
    QCOMPARE(leaf->getMonitoringChannels().getCount(), 1UL);
    QCOMPARE(takeCommands(&bench), QStringList());
    // A fill finds no label and goes on.
    leaf->fillMonitoringTable();
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
}

void TestMonitoringLeaf::aChannelWithoutANameLeavesTheTableIncomplete()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), boardA() + monitor("A: 1\n: 2\nB: 3\n"));
    QCOMPARE(getRefuser([leaf] { leaf->initialize(); }), QString("getMonitoringVoltageLabel"));
    QCOMPARE(leaf->getMonitoringChannels().getCount(), 3UL);
    QCOMPARE(getRows(*leaf), QStringList("A|1|"));

    // The next good reply makes it whole.
    setScenario(&bench, panel.getEngine(), boardA() + monitor("A: 1\nB: 3\n"));
    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList({"A|1|", "B|3|"}));
    QCOMPARE(countLabels(*leaf), 3 + 2 + 2);
}

void TestMonitoringLeaf::aFillWithAChannelWithoutANameBlocksTheTimer()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("A: 1\nB: 2\n"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    setScenario(&bench, panel.getEngine(), boardA() + monitor("A: 3\n: 4\nB: 5\n"));
    QCOMPARE(getRefuser([leaf] { leaf->fillMonitoringTable(); }),
             QString("getMonitoringVoltageLabel"));
    QCOMPARE(getRows(*leaf), QStringList({"A|3|", "B|2|"}));
    QVERIFY(getTimer(*leaf)->signalsBlocked());
    takeCommands(&bench);
    tick(*leaf);
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestMonitoringLeaf::aTickThatFailsReachesTheApplicationAndIsTheLast()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("A: 1\n"));
    Panel panel;
    const auto& leaf = *panel.find<MonitoringLeaf>();
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(1);
    setScenario(&bench, panel.getEngine(), boardA() + monitor(": 2\n"));
    takeCommands(&bench);

    getTimer(leaf)->setInterval(1);
    QStringList escaped;
    QTRY_VERIFY(!(escaped += Test::TestApplication::get()->takeEscapedExceptions()).isEmpty());
    QVERIFY(escaped.first().contains("Empty name"));
    // The timer runs on, unheard, until the page is made anew.
    QVERIFY(getTimer(leaf)->isActive());
    QVERIFY(getTimer(leaf)->signalsBlocked());
    setScenario(&bench, panel.getEngine(), boardA() + monitor("A: 3\n"));
    QCOMPARE(takeCommands(&bench), QStringList(monitorCommand));
    QCOMPARE(getRows(leaf), QStringList("A|1|"));
}

void TestMonitoringLeaf::anEmptyNameHasNoLabel()
{
    const MonitoringLeaf leaf(nullptr);
    QCOMPARE(getRefuser([&leaf] { leaf.getMonitoringVoltageLabel(""); }),
             QString("getMonitoringVoltageLabel"));
    QCOMPARE(getRefuser([&leaf] { leaf.getMonitoringCurrentLabel(""); }),
             QString("getMonitoringCurrentLabel"));
}

void TestMonitoringLeaf::anUnknownNameHasNoLabel()
{
    const MonitoringLeaf leaf(nullptr);
    QVERIFY(leaf.getMonitoringVoltageLabel("V") == nullptr);
    QVERIFY(leaf.getMonitoringCurrentLabel("V") == nullptr);
}

void TestMonitoringLeaf::aRefusedReadIsAFalseRow()
{
    Bench bench;
    bench.setScenario(boardA() + Bench::fault("board monitor get",
                                              "kind = \"refused\"\nmessage = \"Busy\"\ntimes = 0"));
    Panel panel;
    ConsoleRecorder console;
    auto* leaf = panel.find<MonitoringLeaf>();
    leaf->initialize();
    QCOMPARE(getRows(*leaf), QStringList("Error|Busy|"));
    QCOMPARE(console.getLines(), QStringList());
}

void TestMonitoringLeaf::aReplyOfTenMegabytesIsRead()
{
    Bench bench;
    bench.setScenario(
        boardA() + monitor("V: 1 2\n") +
        Bench::fault("board monitor get", "kind = \"large\"\nbytes = 10000000\ntimes = 0"));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    QCOMPARE(getRows(*leaf), QStringList("V|1|2"));
    leaf->fillMonitoringTable();
    QCOMPARE(countLabels(*leaf), 3 + 1 + 2);
}

void TestMonitoringLeaf::aReplyOfThousandsOfChannelsIsShown()
{
    const int count = 2000;
    QByteArray lines;
    for (int number = 0; number < count; ++number) {
        lines += "Channel " + QByteArray::number(number) + ": 1 2\n";
    }
    Bench bench;
    bench.setScenario(boardA() + monitor(lines));
    Panel panel;
    auto* leaf = panel.find<MonitoringLeaf>();
    leaf->initialize();
    QCOMPARE(getRows(*leaf).size(), count);
    QCOMPARE(getRows(*leaf).last(), QString("Channel %1|1|2").arg(count - 1));
    QCOMPARE(countLabels(*leaf), 3 + 3 * count);
}

void TestMonitoringLeaf::withoutAFolioNothingHappens()
{
    MonitoringLeaf leaf(nullptr);
    ConsoleRecorder console;
    QVERIFY(leaf.getFolio() == nullptr);
    QVERIFY(leaf.getKSBaseHandler() == nullptr);
    leaf.initialize();
    leaf.fillMonitoringTable();
    QCOMPARE(Test::describeGrid(*getTable(leaf)), headings);
    QCOMPARE(console.getLines(), QStringList());
}

void TestMonitoringLeaf::theWindowMayBeDeletedInTheWaitOfAFill()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    FragilePanel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 1 2\n") + bench.hold("board monitor get"));
    auto* leaf = panel.getWindow()->findChild<MonitoringLeaf*>();
    panel.deleteWindowOnceReceived(&bench, monitorCommand);
    leaf->fillMonitoringTable();
    QVERIFY(panel.getWindow() == nullptr);
}

void TestMonitoringLeaf::theWindowMayBeDeletedInTheWaitOfAnInitialization()
{
    Bench bench;
    bench.setScenario(boardA() + monitor("V: 1 2\n"));
    FragilePanel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + monitor("V: 1 2\n") + bench.hold("board monitor get"));
    auto* leaf = panel.getWindow()->findChild<MonitoringLeaf*>();
    panel.deleteWindowOnceReceived(&bench, monitorCommand);
    leaf->initialize();
    QVERIFY(panel.getWindow() == nullptr);
}

KESTOBOARD_TEST_MAIN(TestMonitoringLeaf)

#include "tst_monitoring_leaf.moc"
