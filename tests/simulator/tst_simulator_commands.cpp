#include "SimulatedTool.h"

#include <MonitorReport.h>

#include <QRegularExpression>
#include <QTest>

namespace
{

const QByteArray ok("OK\nCOMMAND SUCCEEDED\n");

QByteArray refused(const QByteArray& reason)
{
    return "Error: " + reason + "\nCOMMAND FAILED\n";
}

QByteArray said(const QByteArray& lines)
{
    return lines + "\nCOMMAND SUCCEEDED\n";
}

void addExchange(const char* line, const QByteArray& answer)
{
    QTest::newRow(line) << QByteArray(line) << answer;
}

void addSetters()
{
    const QByteArray noSwitch = refused("Either on or off must follow");
    const QByteArray noQuotes =
        refused("The mode must stand between single quotes, such as 'Jtag only'");
    const QByteArray noMode = refused("Unknown mode, the modes are 'Master Serial', 'Jtag only', "
                                      "'Master SPI', 'Master SPI + Vcc', 'Slave SpaceWire'");
    addExchange("board set mode 'Master SPI'", ok);
    addExchange("board set mode Master SPI", noQuotes);
    addExchange("board set mode '", noQuotes);
    addExchange("board set mode", noQuotes);
    addExchange("board set mode ''", noMode);
    addExchange("board set mode 'jtag only'", noMode);
    addExchange("board set reset on", ok);
    addExchange("board set reset off", ok);
    addExchange("board set reset", noSwitch);
    addExchange("board set reset 1", noSwitch);
    addExchange("board set reset on off", noSwitch);
    addExchange("board set jtag_clock on", ok);
    addExchange("board set jtag_clock off", ok);
    addExchange("board set jtag_clock ON", noSwitch);
    addExchange("board set force_bit on", ok);
    addExchange("board set force_bit off", ok);
    addExchange("board set force_bit maybe", noSwitch);
}

void addOthers()
{
    const QByteArray noArgument = refused("This command takes no argument");
    const QByteArray noNumber = refused("A whole number must follow");
    const QByteArray noBoard = refused("There is no board of this number, they go from 0 to 0");
    const QByteArray noHandler = refused("The error handler must be Text or Silent");
    addExchange("board list now", noArgument);
    addExchange("board select 0", ok);
    addExchange("board select 0 ", ok);
    addExchange("board select", noNumber);
    addExchange("board select one", noNumber);
    addExchange("board select 0x", noNumber);
    addExchange("board select 1", noBoard);
    addExchange("board select -1", noBoard);
    addExchange("board select 99999999999999999999", noNumber);
    addExchange("board get mode", said("Jtag only"));
    addExchange("board get mode 1", noArgument);
    addExchange("board get force_bit", said("Forcebit is not set"));
    addExchange("board get force_bit x", noArgument);
    addExchange("board monitor get 0", said("VIO: 3.300V 0.080A"));
    addExchange("board monitor get", noNumber);
    addExchange("board monitor get 1", refused("The only monitor is 0"));
    addExchange("chip bitstream err_handler select Text", ok);
    addExchange("chip bitstream err_handler select Silent", ok);
    addExchange("chip bitstream err_handler select Text outfilepath=/out/with blank.txt", ok);
    addExchange("chip bitstream err_handler select",
                refused("The error handler must be Text or Silent"));
    addExchange("chip bitstream err_handler select text", noHandler);
    addExchange("chip bitstream err_handler select Text outfilepath=",
                refused("A path must follow outfilepath="));
    addExchange("chip bitstream err_handler select Text /out",
                refused("Only outfilepath=PATH can follow the name"));
    addExchange("help me", noArgument);
}

} // namespace

/// Each command but the transfers and the capture: what it answers and what it leaves behind.
class TestSimulatorCommands : public QObject
{
    Q_OBJECT

private slots:
    void aCommandIsAnswered_data();
    void aCommandIsAnswered();
    void aCommandThatNeedsABoardIsRefusedWithoutOne_data();
    void aCommandThatNeedsABoardIsRefusedWithoutOne();
    void boardsAreNumberedInByteOrderOfTheirNames();
    void theSelectedBoardIsMarked();
    void aRefusedSelectionChangesNothing();
    void eachBoardHasItsOwnState();
    void everyModeOfThePanelCanBeSet_data();
    void everyModeOfThePanelCanBeSet();
    void theModeOfTheScenarioCanBeSetAgain();
    void aLockedModeStays();
    void theForceBitIsReadBack();
    void anUnreadableForceBitIsAnError();
    void refusalsHoldNoSignOfSuccess();
    void theMonitorShowsValuesAsTheyStand();
    void suppliesDriftAroundTheirNominalValues();
    void driftKeepsUnitsAndDecimals();
    void aValueWithoutNumberDoesNotDrift();
    void aBoardWithoutChannelsHasAnEmptyReport();
    void helpListsEveryCommand();
};

void TestSimulatorCommands::aCommandIsAnswered_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("answer");
    addSetters();
    addOthers();
}

void TestSimulatorCommands::aCommandIsAnswered()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, answer);
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "[[board.channel]]\nname = 'VIO'\nvoltage = 3.3\n"
                                     "current = 0.08\ndrift = false\n");
    tool.start();
    QCOMPARE(tool.ask(line), answer);
}

void TestSimulatorCommands::aCommandThatNeedsABoardIsRefusedWithoutOne_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char* line :
         {"board get mode", "board get force_bit", "board set mode 'Jtag only'",
          "board set reset on", "board set jtag_clock off", "board set force_bit on",
          "board monitor get 0", "board spi flash program scenario.toml",
          "chip bitstream load scenario.toml", "chip bitstream err_handler select Text",
          "ksscope capture out.vcd 1E6 immediate=1"}) {
        QTest::newRow(line) << QByteArray(line);
    }
}

void TestSimulatorCommands::aCommandThatNeedsABoardIsRefusedWithoutOne()
{
    QFETCH(QByteArray, line);
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'KS-Dev A'\n");
    tool.start();
    QCOMPARE(tool.ask(line), refused("No board selected"));
    tool.setScenario({});
    tool.ask("board list");
    QCOMPARE(tool.ask(line), refused("No board selected"));
    QCOMPARE(tool.ask("board select 0"), refused("There is no board"));
}

void TestSimulatorCommands::boardsAreNumberedInByteOrderOfTheirNames()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = '\xC3\xA9toile'\nmode = 'third'\n"
                     "[[board]]\nname = 'a'\nmode = 'second'\n"
                     "[[board]]\nname = 'Z'\nmode = 'first'\n"
                     "[[board]]\nname = 'Z 1'\nmode = 'after its prefix'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 4\n- 0x534B0001 \xC3\xA9toile\n"
                                          "- 0x534B0002 a\n- 0x534B0003 Z\n- 0x534B0004 Z 1"));
    tool.ask("board select 0");
    QCOMPARE(tool.ask("board get mode"), said("first"));
    tool.ask("board select 1");
    QCOMPARE(tool.ask("board get mode"), said("after its prefix"));
    tool.ask("board select 2");
    QCOMPARE(tool.ask("board get mode"), said("second"));
    tool.ask("board select 3");
    QCOMPARE(tool.ask("board get mode"), said("third"));
}

void TestSimulatorCommands::theSelectedBoardIsMarked()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'B'\n[[board]]\nname = 'A'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 B\n- 0x534B0002 A"));
    QCOMPARE(tool.ask("board select 1"), ok);
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n* 0x534B0001 B\n- 0x534B0002 A"));
    QCOMPARE(tool.ask("board select 0"), ok);
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 B\n* 0x534B0002 A"));
}

void TestSimulatorCommands::aRefusedSelectionChangesNothing()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board select -1");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n* 0x534B0001 KS-Dev A"));
}

void TestSimulatorCommands::eachBoardHasItsOwnState()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'A'\n[[board]]\nname = 'B'\nforce_bit = 'set'\n");
    tool.start();
    tool.ask("board select 0");
    QCOMPARE(tool.ask("board set mode 'Master SPI + Vcc'"), ok);
    tool.ask("board select 1");
    QCOMPARE(tool.ask("board get mode"), said("Jtag only"));
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is set"));
    tool.ask("board select 0");
    QCOMPARE(tool.ask("board get mode"), said("Master SPI + Vcc"));
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is not set"));
}

void TestSimulatorCommands::everyModeOfThePanelCanBeSet_data()
{
    QTest::addColumn<QByteArray>("mode");
    for (const char* mode :
         {"Master Serial", "Jtag only", "Master SPI", "Master SPI + Vcc", "Slave SpaceWire"}) {
        QTest::newRow(mode) << QByteArray(mode);
    }
}

void TestSimulatorCommands::everyModeOfThePanelCanBeSet()
{
    QFETCH(QByteArray, mode);
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("board set mode '" + mode + "'"), ok);
    QCOMPARE(tool.ask("board get mode"), said(mode));
}

void TestSimulatorCommands::theModeOfTheScenarioCanBeSetAgain()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "mode = 'Factory test'\n");
    tool.start();
    tool.ask("board set mode 'Jtag only'");
    QCOMPARE(tool.ask("board set mode 'Factory test'"), ok);
    QCOMPARE(tool.ask("board get mode"), said("Factory test"));
}

void TestSimulatorCommands::aLockedModeStays()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "mode = 'Factory test'\nmode_locked = true\n");
    tool.start();
    QCOMPARE(tool.ask("board set mode 'Jtag only'"),
             refused("The mode switch of this board is locked"));
    QCOMPARE(tool.ask("board get mode"), said("Factory test"));
}

void TestSimulatorCommands::theForceBitIsReadBack()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board set force_bit on");
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is set"));
    tool.ask("board set force_bit off");
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is not set"));
}

void TestSimulatorCommands::anUnreadableForceBitIsAnError()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "force_bit = 'unreadable'\n");
    tool.start();
    QCOMPARE(tool.ask("board set force_bit on"), ok);
    QCOMPARE(tool.ask("board get force_bit"), refused("The force bit cannot be read"));
}

void TestSimulatorCommands::refusalsHoldNoSignOfSuccess()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QVERIFY(!tool.ask("board set mode 'OK'").contains("OK"));
    QVERIFY(!tool.ask("board set reset OK").contains("OK"));
    QVERIFY(!tool.ask("board select OK").contains("OK"));
    QVERIFY(!tool.ask("chip bitstream err_handler select OK").contains("OK"));
    QVERIFY(!tool.ask("chip bitstream load /OK/Counters: 0 exception(s), 0 read32 timeout(s), "
                      "0 32bit word(s) read in error")
                 .contains("Counters"));
}

void TestSimulatorCommands::theMonitorShowsValuesAsTheyStand()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() +
                     "[[board.channel]]\nname = 'Temp\xC3\xA9rature'\nvalue = '41.5\xC2\xB0"
                     "C'\n"
                     "[[board.channel]]\nname = 'Two'\nvalue = '41.5 K'\n"
                     "[[board.channel]]\nname = 'Three'\nvalues = ['a', 'b', 'c']\n"
                     "[[board.channel]]\nname = 'Two'\nvalues = ['x']\n"
                     "[[board.channel]]\nname = 'V'\nvoltage = 1\ndrift = false\n"
                     "[[board.channel]]\nname = 'A'\ncurrent = 0.25\ndrift = false\n");
    tool.start();
    QCOMPARE(tool.ask("board monitor get 0"), said("Temp\xC3\xA9rature: 41.5\xC2\xB0"
                                                   "C\nTwo: 41.5 K\nThree: a b c\nTwo: x\n"
                                                   "V: 1.000V\nA: 0.250A"));
}

void TestSimulatorCommands::suppliesDriftAroundTheirNominalValues()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() +
                     "[[board.channel]]\nname = 'VCore'\nvoltage = 1.0\ncurrent = 0.35\n");
    tool.start();
    const QRegularExpression form(
        QStringLiteral("^VCore: (\\d\\.\\d{3})V (\\d\\.\\d{3})A\nCOMMAND SUCCEEDED\n$"));
    QSet<QByteArray> reports;
    for (int i = 0; i < 50; ++i) {
        const QByteArray report = tool.ask("board monitor get 0");
        const auto match = form.match(QString::fromUtf8(report));
        QVERIFY2(match.hasMatch(), report.constData());
        QVERIFY(qAbs(match.captured(1).toDouble() - 1.0) < 0.005);
        QVERIFY(qAbs(match.captured(2).toDouble() - 0.35) < 0.015);
        reports.insert(report);
    }
    QVERIFY(reports.size() > 10);
}

void TestSimulatorCommands::driftKeepsUnitsAndDecimals()
{
    Simulator::ChannelSetup temperature;
    temperature.name = "Temperature";
    temperature.values = {"-41.5°C", "3200rpm"};
    temperature.drifting = true;
    QSet<QString> reports;
    for (unsigned long reading = 0; reading < 20; ++reading) {
        const QString report =
            QString::fromStdString(Simulator::getMonitorReport({temperature}, reading));
        const auto match =
            QRegularExpression(QStringLiteral("^Temperature: (-4\\d\\.\\d)°C (3[12]\\d\\d)rpm\n$"))
                .match(report);
        QVERIFY2(match.hasMatch(), qPrintable(report));
        reports.insert(report);
    }
    QVERIFY(reports.size() > 5);
}

void TestSimulatorCommands::aValueWithoutNumberDoesNotDrift()
{
    Simulator::ChannelSetup channel;
    channel.name = "Fan";
    channel.values = {"fast", "inf", "-", ""};
    channel.drifting = true;
    QCOMPARE(Simulator::getMonitorReport({channel}, 3), std::string("Fan: fast inf - \n"));
}

void TestSimulatorCommands::aBoardWithoutChannelsHasAnEmptyReport()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("board monitor get 0"), QByteArray("COMMAND SUCCEEDED\n"));
}

void TestSimulatorCommands::helpListsEveryCommand()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    const QByteArray help = tool.ask("help");
    for (const char* command :
         {"board list", "board select N", "board get mode", "board get force_bit",
          "board set mode 'MODE'", "board set reset on|off", "board set jtag_clock on|off",
          "board set force_bit on|off", "board monitor get 0", "board spi flash program PATH",
          "chip bitstream load PATH", "chip bitstream err_handler select NAME [outfilepath=PATH]",
          "ksscope capture FILE FREQUENCY [immediate=1]", "help"}) {
        QVERIFY2(help.contains(QByteArray("\n  ") + command + " "), command);
    }
    QVERIFY(help.endsWith("\nCOMMAND SUCCEEDED\n"));
}

QTEST_GUILESS_MAIN(TestSimulatorCommands)
#include "tst_simulator_commands.moc"
