#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/BasicLeaf.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/Fatal.h>

#include <QCheckBox>
#include <QComboBox>

#include <memory>

using Board::BasicLeaf;
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

const QStringList readBack = {"board get mode", "board get force_bit"};
const QString success = "COMMAND SUCCEEDED\n";

QString boardA(const QString& moreKeys = {})
{
    return Bench::board("KS-Dev A", "selected = true\n" + moreKeys);
}

QCheckBox* getBox(const QObject& root, const char* name)
{
    return getNamed<QCheckBox>(root, name);
}

QComboBox* getModes(const QObject& root)
{
    return getNamed<QComboBox>(root, "modeComboBox");
}

} // namespace

class TestBasicLeaf : public QObject
{
    Q_OBJECT

private slots:
    void theFormStandsInItsGrid();
    void theSlotsStandInTheirOrder();
    void theModesStandInTheirOrder();
    void withoutABoardTheWidgetsShowTheirDefaultsAndNothingIsSent();
    void aFreshBoardShowsTheStateOfItsBringUp();
    void loadingReadsTheModeFirstAndTheForceBitLast();
    void aSetForceBitIsShown();

    void aCheckBoxSendsItsOwnCommandAlone_data();
    void aCheckBoxSendsItsOwnCommandAlone();
    void withoutABoardACheckBoxStillSendsItsCommand();
    void aPartlyCheckedStateCountsAsOff();
    void aRefusedBitStaysOnTheScreenUntilTheNextLoad_data();
    void aRefusedBitStaysOnTheScreenUntilTheNextLoad();

    void aPickedModeIsSentAndReadBack_data();
    void aPickedModeIsSentAndReadBack();
    void withoutABoardAPickedModeStillIsSent();
    void aRefusedModeShowsTheOldOneAgainAndSendsNoMore();
    void theModeThatIsShownSendsNothing();
    void anUnknownModeLeavesTheSelectorBlankAndSendsNothing();
    void theModeIsComparedExactly_data();
    void theModeIsComparedExactly();
    void aModeOfOtherBytesIsNoKnownMode();

    void actionsWhileThePageIsLoadedAreDropped();
    void aBoardPickedInTheWaitOfALoadDoesNotUnmuteTheOuterLoad();
    void aFatalForceBitLeavesThePageMute();
    void anUnreadableForceBitIsOffAndToldOnTheConsole();
    void aBoardThatVanishesInTheWaitOfALoadIsNoHarm();
    void aSecondActionInTheWaitOfTheFirstIsQueuedBehindIt();
    void anEmptyReplyIsAnUnknownModeAndAFatalForceBit();
    void aReplyOfTenMegabytesIsReadByItsFirstLine();
    void hidingAndShowingInAWaitChangesNothing();

    void withoutAFolioNothingHappens();
    void theWindowMayBeDeletedInTheWaitOfALoad_data();
    void theWindowMayBeDeletedInTheWaitOfALoad();
    void theWindowMayBeDeletedInTheWaitOfAModeChange();
};

void TestBasicLeaf::theFormStandsInItsGrid()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<BasicLeaf>();
    QCOMPARE(Test::describeGrid(leaf), QStringList({
                                           "0,0 1x1 QLabel 'Mode'",
                                           "0,1 1x1 QComboBox modeComboBox",
                                           "2,0 1x3 QLabel 'Service<hr />'",
                                           "3,0 1x1 QLabel 'Force reset'",
                                           "3,1 1x1 QCheckBox resetCheckBox",
                                           "4,0 1x1 QLabel 'Force clock'",
                                           "4,1 1x1 QCheckBox clockCheckBox",
                                           "5,0 1x1 QLabel 'Force mode'",
                                           "5,1 1x1 QCheckBox forceModeCheckBox",
                                       }));
    QCOMPARE(Test::describeMetrics(leaf), QStringList({"spacing: 8", "column stretch 2: 1",
                                                       "row minimum 1: 20", "row stretch 6: 1"}));
    QCOMPARE(getBox(leaf, "resetCheckBox")->text(), QString());
    QVERIFY(!getBox(leaf, "resetCheckBox")->isTristate());
}

void TestBasicLeaf::theSlotsStandInTheirOrder()
{
    QCOMPARE(Test::describeMethods(BasicLeaf::staticMetaObject),
             QStringList({"private slot onReset(int)", "private slot onClock(int)",
                          "private slot onForceMode(int)", "private slot onModeChange(QString)"}));
}

void TestBasicLeaf::theModesStandInTheirOrder()
{
    Bench bench;
    Panel panel;
    const QComboBox* modes = getModes(*panel.getFolio());
    QVERIFY(Test::isEnriched(*modes));
    QStringList texts;
    for (int index = 0; index < modes->count(); ++index) {
        texts += modes->itemText(index);
        QVERIFY(modes->itemIcon(index).isNull());
        QVERIFY(!modes->itemData(index).isValid());
    }
    QCOMPARE(texts, QStringList({"Master Serial", "Jtag only", "Master SPI", "Master SPI + Vcc",
                                 "Slave SpaceWire"}));
}

void TestBasicLeaf::withoutABoardTheWidgetsShowTheirDefaultsAndNothingIsSent()
{
    Bench bench;
    Panel panel;
    auto* leaf = panel.find<BasicLeaf>();
    leaf->initialize();
    QCOMPARE(getModes(*leaf)->currentIndex(), 0);
    QVERIFY(!getBox(*leaf, "resetCheckBox")->isChecked());
    QVERIFY(!getBox(*leaf, "clockCheckBox")->isChecked());
    QVERIFY(!getBox(*leaf, "forceModeCheckBox")->isChecked());
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestBasicLeaf::aFreshBoardShowsTheStateOfItsBringUp()
{
    Bench bench;
    bench.setScenario(boardA("mode = \"Master SPI\""));
    Panel panel;
    const auto& leaf = *panel.find<BasicLeaf>();
    QCOMPARE(getModes(leaf)->currentText(), QString("Jtag only"));
    QVERIFY(!getBox(leaf, "resetCheckBox")->isChecked());
    QVERIFY(getBox(leaf, "clockCheckBox")->isChecked());
    QVERIFY(!getBox(leaf, "forceModeCheckBox")->isChecked());
}

void TestBasicLeaf::loadingReadsTheModeFirstAndTheForceBitLast()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    takeCommands(&bench);
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(takeCommands(&bench), readBack);
}

void TestBasicLeaf::aSetForceBitIsShown()
{
    Bench bench;
    bench.setScenario(boardA("force_bit = \"set\""));
    Panel panel;
    QVERIFY(getBox(*panel.getFolio(), "forceModeCheckBox")->isChecked());
}

void TestBasicLeaf::aCheckBoxSendsItsOwnCommandAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("wasOn");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("message");

    const auto add = [](const char* name, bool wasOn, const QString& command, const QString& bit) {
        for (const bool on : {!wasOn, wasOn}) {
            const QString word = on ? "on" : "off";
            QTest::newRow(qPrintable(QString("%1 %2").arg(name, word)))
                << name << !on << command + word << bit + " successfully set to " + word;
        }
    };
    add("resetCheckBox", false, "board set reset ", "Reset bit");
    add("clockCheckBox", true, "board set jtag_clock ", "Clock bit");
    add("forceModeCheckBox", false, "board set force_bit ", "Force bit");
}

void TestBasicLeaf::aCheckBoxSendsItsOwnCommandAlone()
{
    QFETCH(QString, name);
    QFETCH(bool, wasOn);
    QFETCH(QString, command);
    QFETCH(QString, message);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* box = panel.getFolio()->findChild<QCheckBox*>(name);
    QVERIFY(box != nullptr);
    if (box->isChecked() != wasOn) {
        box->click();
    }
    takeCommands(&bench);
    ConsoleRecorder console;

    box->click();
    QCOMPARE(takeCommands(&bench), QStringList(command));
    QCOMPARE(console.getLines(), QStringList(message));
    QCOMPARE(box->isChecked(), !wasOn);
    // What the tool has taken is what the next load shows.
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(box->isChecked(), !wasOn);
}

void TestBasicLeaf::withoutABoardACheckBoxStillSendsItsCommand()
{
    Bench bench;
    Panel panel;
    ConsoleRecorder console;
    getBox(*panel.getFolio(), "resetCheckBox")->click();
    getBox(*panel.getFolio(), "clockCheckBox")->click();
    getBox(*panel.getFolio(), "forceModeCheckBox")->click();
    QCOMPARE(takeCommands(&bench), QStringList({"board set reset on", "board set jtag_clock on",
                                                "board set force_bit on"}));
    QCOMPARE(console.getLines(), QStringList({"E: Reset failed", "E: Setting of clock bit failed",
                                              "E: Setting of force bit failed"}));
}

void TestBasicLeaf::aPartlyCheckedStateCountsAsOff()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    takeCommands(&bench);
    auto* leaf = panel.find<BasicLeaf>();
    for (const char* slot : {"onReset", "onClock", "onForceMode"}) {
        QVERIFY(QMetaObject::invokeMethod(leaf, slot, Q_ARG(int, Qt::PartiallyChecked)));
    }
    QCOMPARE(takeCommands(&bench), QStringList({"board set reset off", "board set jtag_clock off",
                                                "board set force_bit off"}));
}

void TestBasicLeaf::aRefusedBitStaysOnTheScreenUntilTheNextLoad_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::newRow("reset") << "resetCheckBox"
                           << "E: Reset failed";
    QTest::newRow("clock") << "clockCheckBox"
                           << "E: Setting of clock bit failed";
    QTest::newRow("force mode") << "forceModeCheckBox"
                                << "E: Setting of force bit failed";
}

void TestBasicLeaf::aRefusedBitStaysOnTheScreenUntilTheNextLoad()
{
    QFETCH(QString, name);
    QFETCH(QString, message);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::fault("board set", "kind = \"refused\"\ntimes = 0"));
    ConsoleRecorder console;
    auto* box = panel.getFolio()->findChild<QCheckBox*>(name);
    const bool wasOn = box->isChecked();

    box->click();
    QCOMPARE(console.getLines(), QStringList(message));
    QCOMPARE(box->isChecked(), !wasOn);
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(box->isChecked(), wasOn);
}

void TestBasicLeaf::aPickedModeIsSentAndReadBack_data()
{
    QTest::addColumn<QString>("mode");
    for (const char* mode :
         {"Master Serial", "Jtag only", "Master SPI", "Master SPI + Vcc", "Slave SpaceWire"}) {
        QTest::newRow(mode) << mode;
    }
}

void TestBasicLeaf::aPickedModeIsSentAndReadBack()
{
    QFETCH(QString, mode);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    QComboBox* modes = getModes(*panel.getFolio());
    modes->setCurrentText(mode == "Master SPI" ? "Master Serial" : "Master SPI");
    takeCommands(&bench);
    ConsoleRecorder console;

    modes->setCurrentText(mode);
    QCOMPARE(takeCommands(&bench), QStringList("board set mode '" + mode + "'") + readBack);
    QCOMPARE(console.getLines(), QStringList("Mode successfully set to " + mode));
    QCOMPARE(modes->currentText(), mode);
}

void TestBasicLeaf::withoutABoardAPickedModeStillIsSent()
{
    Bench bench;
    Panel panel;
    ConsoleRecorder console;
    getModes(*panel.getFolio())->setCurrentIndex(2);
    QCOMPARE(takeCommands(&bench), QStringList("board set mode 'Master SPI'"));
    QCOMPARE(console.getLines(), QStringList("E: Mode change failed"));
    QCOMPARE(getModes(*panel.getFolio())->currentIndex(), 2);
}

void TestBasicLeaf::aRefusedModeShowsTheOldOneAgainAndSendsNoMore()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::fault("board set mode", "kind = \"refused\"\ntimes = 0"));
    takeCommands(&bench);
    ConsoleRecorder console;

    QComboBox* modes = getModes(*panel.getFolio());
    modes->setCurrentText("Slave SpaceWire");
    QCOMPARE(takeCommands(&bench), QStringList("board set mode 'Slave SpaceWire'") + readBack);
    QCOMPARE(console.getLines(), QStringList("E: Mode change failed"));
    QCOMPARE(modes->currentText(), QString("Jtag only"));
}

void TestBasicLeaf::theModeThatIsShownSendsNothing()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    takeCommands(&bench);
    QComboBox* modes = getModes(*panel.getFolio());
    modes->setCurrentIndex(modes->currentIndex());
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestBasicLeaf::anUnknownModeLeavesTheSelectorBlankAndSendsNothing()
{
    Bench bench;
    bench.setScenario(boardA() + Bench::reply("board get mode", "Boundary scan\n" + success));
    Panel panel;
    QComboBox* modes = getModes(*panel.getFolio());
    QCOMPARE(modes->currentIndex(), -1);
    QCOMPARE(modes->currentText(), QString());
    QVERIFY(!takeCommands(&bench).contains("board set mode ''"));

    // The page is not mute afterwards.
    modes->setCurrentText("Master SPI");
    QVERIFY(takeCommands(&bench).contains("board set mode 'Master SPI'"));
}

void TestBasicLeaf::theModeIsComparedExactly_data()
{
    QTest::addColumn<QString>("firstLine");
    QTest::addColumn<int>("index");
    QTest::newRow("exact") << "Master SPI" << 2;
    QTest::newRow("longer") << "Master SPI + Vcc" << 3;
    QTest::newRow("other case") << "master spi" << -1;
    QTest::newRow("blank at the end") << "Master SPI " << -1;
    QTest::newRow("carriage return") << "Master SPI\r" << -1;
    QTest::newRow("empty") << "" << -1;
}

void TestBasicLeaf::theModeIsComparedExactly()
{
    QFETCH(QString, firstLine);
    QFETCH(int, index);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    QString text = firstLine + "\nMaster Serial\n" + success;
    text.replace("\r", "\\r");
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::fault("board get mode", "kind = \"reply\"\ntimes = 0\ntext = \"" +
                                                              text.replace("\n", "\\n") + "\""));
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(getModes(*panel.getFolio())->currentIndex(), index);
}

void TestBasicLeaf::aModeOfOtherBytesIsNoKnownMode()
{
    // An entry whose characters are those that the bytes of the reply spell one by one.
    const QString latin1 = QString::fromLatin1("Mode \xC3\xA9");
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    QComboBox* modes = getModes(*panel.getFolio());
    modes->addItem(latin1);
    setScenario(&bench, panel.getEngine(),
                boardA() +
                    Bench::reply("board get mode", QString::fromUtf8("Mode \xC3\xA9\n") + success));
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(modes->currentText(), latin1);
}

void TestBasicLeaf::actionsWhileThePageIsLoadedAreDropped()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board get mode"));
    takeCommands(&bench);
    const auto& leaf = *panel.find<BasicLeaf>();

    doOnceReceived(&bench, "board get mode", [&] {
        getBox(leaf, "resetCheckBox")->click();
        getBox(leaf, "clockCheckBox")->click();
        getBox(leaf, "forceModeCheckBox")->click();
        getModes(leaf)->setCurrentIndex(4);
        bench.release();
    });
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(takeCommands(&bench), readBack);
    // The later steps wrote over what the person did.
    QCOMPARE(getModes(leaf)->currentText(), QString("Jtag only"));
    QVERIFY(!getBox(leaf, "resetCheckBox")->isChecked());
    QVERIFY(getBox(leaf, "clockCheckBox")->isChecked());
    QVERIFY(!getBox(leaf, "forceModeCheckBox")->isChecked());
}

void TestBasicLeaf::aBoardPickedInTheWaitOfALoadDoesNotUnmuteTheOuterLoad()
{
    const QString boards = boardA() + Bench::board("KS-Dev B");
    Bench bench;
    bench.setScenario(boards);
    Panel panel;
    setScenario(
        &bench, panel.getEngine(),
        boards + bench.hold("board get mode") +
            Bench::fault("board get mode",
                         "kind = \"reply\"\ntext = \"\"\"Master Serial\n" + success + "\"\"\""));
    takeCommands(&bench);
    auto* leaf = panel.find<BasicLeaf>();

    doOnceReceived(&bench, "board get mode", [&] {
        doInNextWait([&] { bench.release(); });
        getNamed<QComboBox>(*panel.getFolio(), "cardComboBox")->setCurrentIndex(1);
    });
    leaf->initialize();
    // The outer load writes the first board's mode over the second's, and does not send it.
    QCOMPARE(takeCommands(&bench),
             QStringList({"board get mode", "board select 1", "board get mode",
                          "board get force_bit", "board monitor get 0", "board get force_bit"}));
    QCOMPARE(getModes(*leaf)->currentText(), QString("Master Serial"));

    getBox(*leaf, "resetCheckBox")->click();
    QCOMPARE(takeCommands(&bench), QStringList("board set reset on"));
}

void TestBasicLeaf::aFatalForceBitLeavesThePageMute()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::fault("board get force_bit",
                                        "kind = \"reply\"\ntext = \"Perhaps\\nCOMMAND "
                                        "SUCCEEDED\\n\""));
    auto* leaf = panel.find<BasicLeaf>();
    try {
        leaf->initialize();
        QFAIL("no exception");
    } catch (const Orvex::Fatal& failure) {
        QCOMPARE(QString::fromStdString(failure.getFunction()), QString("_getForceBit"));
    }
    takeCommands(&bench);

    getBox(*leaf, "resetCheckBox")->click();
    getModes(*leaf)->setCurrentIndex(0);
    QCOMPARE(takeCommands(&bench), QStringList());
    // Also after a load that works.
    leaf->initialize();
    takeCommands(&bench);
    getBox(*leaf, "resetCheckBox")->click();
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestBasicLeaf::anUnreadableForceBitIsOffAndToldOnTheConsole()
{
    Bench bench;
    bench.setScenario(boardA("force_bit = \"unreadable\""));
    Panel panel;
    ConsoleRecorder console;
    auto* leaf = panel.find<BasicLeaf>();
    leaf->initialize();
    QCOMPARE(console.getLines(), QStringList("E: The force bit cannot be read"));
    QVERIFY(!getBox(*leaf, "forceModeCheckBox")->isChecked());
    takeCommands(&bench);
    getBox(*leaf, "resetCheckBox")->click();
    QCOMPARE(takeCommands(&bench), QStringList("board set reset on"));
}

void TestBasicLeaf::aBoardThatVanishesInTheWaitOfALoadIsNoHarm()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    getBox(*panel.getFolio(), "resetCheckBox")->click();
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board get mode"));
    takeCommands(&bench);

    doOnceReceived(&bench, "board get mode", [&] {
        bench.setScenario({});
        doInNextWait([&] { bench.release(); });
        panel.getEngine()->refreshTamsaMap();
    });
    auto* leaf = panel.find<BasicLeaf>();
    leaf->initialize();
    QVERIFY(panel.getEngine()->getTamsas().isEmpty());
    QCOMPARE(takeCommands(&bench), readBack);
    QVERIFY(!getBox(*leaf, "resetCheckBox")->isChecked());
    QVERIFY(!getBox(*leaf, "clockCheckBox")->isChecked());
}

void TestBasicLeaf::aSecondActionInTheWaitOfTheFirstIsQueuedBehindIt()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board set reset on"));
    takeCommands(&bench);
    ConsoleRecorder console;

    doOnceReceived(&bench, "board set reset on", [&] {
        doInNextWait([&] { bench.release(); });
        getBox(*panel.getFolio(), "forceModeCheckBox")->click();
    });
    getBox(*panel.getFolio(), "resetCheckBox")->click();
    QCOMPARE(takeCommands(&bench), QStringList({"board set reset on", "board set force_bit on"}));
    // The inner wait ends first, whichever was answered first.
    QCOMPARE(console.getLines(),
             QStringList({"Force bit successfully set to on", "Reset bit successfully set to on"}));
}

void TestBasicLeaf::anEmptyReplyIsAnUnknownModeAndAFatalForceBit()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + Bench::reply("board get", success));
    auto* leaf = panel.find<BasicLeaf>();
    QVERIFY_EXCEPTION_THROWN(leaf->initialize(), Orvex::Fatal);
    QCOMPARE(getModes(*leaf)->currentIndex(), -1);
}

void TestBasicLeaf::aReplyOfTenMegabytesIsReadByItsFirstLine()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA("force_bit = \"set\"") +
                    Bench::fault("board get", "kind = \"large\"\nbytes = 10000000\ntimes = 0"));
    auto* leaf = panel.find<BasicLeaf>();
    leaf->initialize();
    QCOMPARE(getModes(*leaf)->currentText(), QString("Jtag only"));
    QVERIFY(getBox(*leaf, "forceModeCheckBox")->isChecked());
}

void TestBasicLeaf::hidingAndShowingInAWaitChangesNothing()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board get mode"));
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(0);
    takeCommands(&bench);

    doOnceReceived(&bench, "board get mode", [&] {
        panel.getFolio()->raiseLeaf(3);
        panel.getFolio()->raiseLeaf(0);
        bench.release();
    });
    panel.find<BasicLeaf>()->initialize();
    QCOMPARE(takeCommands(&bench), readBack);
    QCOMPARE(getModes(*panel.getFolio())->currentText(), QString("Jtag only"));
}

void TestBasicLeaf::withoutAFolioNothingHappens()
{
    BasicLeaf leaf(nullptr);
    QVERIFY(leaf.getFolio() == nullptr);
    QVERIFY(leaf.getKSBaseHandler() == nullptr);
    leaf.initialize();
    getBox(leaf, "resetCheckBox")->click();
    getBox(leaf, "clockCheckBox")->click();
    getBox(leaf, "forceModeCheckBox")->click();
    getModes(leaf)->setCurrentIndex(3);
    QCOMPARE(getModes(leaf)->currentIndex(), 3);
}

void TestBasicLeaf::theWindowMayBeDeletedInTheWaitOfALoad_data()
{
    QTest::addColumn<QString>("command");
    for (const QString& command : readBack) {
        QTest::newRow(qPrintable(command)) << command;
    }
}

void TestBasicLeaf::theWindowMayBeDeletedInTheWaitOfALoad()
{
    QFETCH(QString, command);
    Bench bench;
    bench.setScenario(boardA());
    FragilePanel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold(command));
    auto* leaf = panel.getWindow()->findChild<BasicLeaf*>();
    takeCommands(&bench);

    panel.deleteWindowOnceReceived(&bench, command);
    leaf->initialize();
    QVERIFY(panel.getWindow() == nullptr);
    QCOMPARE(takeCommands(&bench).last(), command);
}

void TestBasicLeaf::theWindowMayBeDeletedInTheWaitOfAModeChange()
{
    Bench bench;
    bench.setScenario(boardA());
    FragilePanel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board set mode"));
    auto* leaf = panel.getWindow()->findChild<BasicLeaf*>();
    takeCommands(&bench);

    panel.deleteWindowOnceReceived(&bench, "board set mode 'Master SPI'");
    // Not by the widget: it would go on with itself after its signal.
    QVERIFY(QMetaObject::invokeMethod(leaf, "onModeChange", Q_ARG(QString, "Master SPI")));
    QVERIFY(panel.getWindow() == nullptr);
    QCOMPARE(takeCommands(&bench), QStringList("board set mode 'Master SPI'"));
}

KESTOBOARD_TEST_MAIN(TestBasicLeaf)

#include "tst_basic_leaf.moc"
