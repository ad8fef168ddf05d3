#include "SimulatedTool.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace
{

QByteArray said(const QByteArray& lines)
{
    return lines + "\nCOMMAND SUCCEEDED\n";
}

void addColumns()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("complaint");
}

void addMistake(const char* title, const QByteArray& text, const QByteArray& complaint)
{
    QTest::newRow(title) << text << complaint;
}

void checkMistake(const QByteArray& text, const QByteArray& complaint)
{
    SimulatedTool tool;
    tool.setWholeScenario(text);
    tool.start();
    const QByteArray answer = tool.ask("board list");
    const QByteArray expected = "Error: Scenario " +
                                QFile::encodeName(tool.getPath(QStringLiteral("scenario.toml"))) +
                                ", " + complaint;
    QCOMPARE(answer.left(expected.size()), expected);
    QVERIFY(answer.endsWith("\nCOMMAND FAILED\n"));
    QCOMPARE(answer.count('\n'), 2);
}

} // namespace

/// The scenario file: what is wrong with it is told, and changes in it reach the bench.
class TestSimulatorScenario : public QObject
{
    Q_OBJECT

private slots:
    void aMistakeIsToldWithFileLineAndReason_data();
    void aMistakeIsToldWithFileLineAndReason();
    void aMistakeInABoardIsTold_data();
    void aMistakeInABoardIsTold();
    void aMistakeInAChannelIsTold_data();
    void aMistakeInAChannelIsTold();
    void aMistakeInAFaultIsTold_data();
    void aMistakeInAFaultIsTold();
    void aScenarioThatIsMissingIsTold();
    void aScenarioThatIsAFolderIsTold();
    void anEmptyScenarioHasNoBoards();
    void aBrokenScenarioLeavesTheBenchAsItWas();
    void aScenarioThatComesLateIsTaken();
    void anyOtherCommandDoesNotReadTheScenario();
    void boardsComeAndGo();
    void aBoardThatStaysKeepsItsState();
    void aBoardThatComesBackBeginsAnew();
    void aSelectedBoardThatGoesLeavesNoneSelected();
    void theMarkOfTheScenarioSelectsWhenItMoves();
    void aChangeOfTheScenarioReachesABoardThatStays();
    void theListingKeepsTheOrderOfTheFile();
    void anIdentifierCanBeGiven();
    void aRawLineIsListedAsItStands();
    void aRawLineCountsAsTheBoardThatItNames();
    void aRawLineCanRepeatAName();
    void relativePathsBeginAtTheScenario();
    void startTextIsSaidBeforeAnyCommand();
    void startExitEndsBeforeAnyCommand();
    void manyBoardsAreListed();
};

void TestSimulatorScenario::aMistakeIsToldWithFileLineAndReason_data()
{
    addColumns();
    addMistake("a key of no meaning", "speed = 1\n", "line 1: A scenario has no key 'speed'");
    addMistake("no text", "\njournal = 5\n", "line 2: 'journal' must be a text between quotes");
    addMistake("a time scale below 0", "time_scale = -1\n",
               "line 1: 'time_scale' must be a number, 0 or more");
    addMistake("an endless time scale", "time_scale = inf\n",
               "line 1: 'time_scale' must be a number, 0 or more");
    addMistake("a time scale of text", "time_scale = 'fast'\n",
               "line 1: 'time_scale' must be a number, 0 or more");
    addMistake("a status out of range", "start_exit = 256\n",
               "line 1: 'start_exit' must be a whole number from 0 to 255");
    addMistake("boards that are none", "board = 3\n", "line 1: 'board' must be a list of tables");
    addMistake("boards that are numbers", "board = [3]\n",
               "line 1: 'board' must be a list of tables, each begun by [[board]]");
    addMistake("no TOML", "\n\nboard = = 3\n", "line 3: ");
    addMistake("an open string", "journal = 'x\n", "line 1: ");
}

void TestSimulatorScenario::aMistakeIsToldWithFileLineAndReason()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, complaint);
    checkMistake(text, complaint);
}

void TestSimulatorScenario::aMistakeInABoardIsTold_data()
{
    addColumns();
    const QByteArray board = "[[board]]\nname = 'A'\n";
    addMistake("a key of no meaning in a board", board + "volts = 3\n",
               "line 3: A board has no key 'volts'");
    addMistake("a board without a name", "\n[[board]]\nmode = 'x'\n",
               "line 2: A board needs a name");
    addMistake("a name of blanks", "[[board]]\nname = ' '\n", "line 2: A board needs a name");
    addMistake("a name of seven words", "[[board]]\nname = 'a b c d e f g'\n",
               "line 2: The name of a board has at most six words");
    addMistake("blanks beside a name", "[[board]]\nname = 'a  b'\n",
               "line 2: The words of a name stand one blank apart");
    addMistake("a line break in a name", "[[board]]\nname = \"a\\nb\"\n",
               "line 2: 'name' must not hold a line break");
    addMistake("a name twice", board + board, "line 4: There are two boards with the name 'A'");
    addMistake("two selected boards",
               board + "selected = true\n[[board]]\nname = 'B'\nselected = true\n",
               "line 6: Only one board can be selected");
    addMistake("a selection that is no flag", board + "selected = 1\n",
               "line 3: 'selected' must be true or false");
    addMistake("a short identifier", board + "identifier = '0x534B'\n",
               "line 3: 'identifier' must be 0x534B and four hexadecimal digits");
    addMistake("another identifier", board + "identifier = '0x534A0001'\n",
               "line 3: 'identifier' must be 0x534B and four hexadecimal digits");
    addMistake("a force bit of no meaning", board + "force_bit = true\n",
               "line 3: 'force_bit' must be a text between quotes");
    addMistake("a force bit of no state", board + "force_bit = 'on'\n",
               "line 3: 'force_bit' must be \"set\", \"clear\" or \"unreadable\"");
    addMistake("a capture of no state", board + "capture = 'no'\n",
               "line 3: 'capture' must be \"ok\" or \"refused\"");
    addMistake("two counters", board + "counters = [0, 0]\n",
               "line 3: 'counters' must be three whole numbers, 0 or more");
    addMistake("a counter below 0", board + "counters = [0, -1, 0]\n",
               "line 3: 'counters' must be three whole numbers, 0 or more");
    addMistake("a counter of text", board + "counters = [0, 'x', 0]\n",
               "line 3: 'counters' must be a list of whole numbers");
    addMistake("a counter alone", board + "counters = 0\n",
               "line 3: 'counters' must be a list of whole numbers");
}

void TestSimulatorScenario::aMistakeInABoardIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, complaint);
    checkMistake(text, complaint);
}

void TestSimulatorScenario::aMistakeInAChannelIsTold_data()
{
    addColumns();
    const QByteArray board = "[[board]]\nname = 'A'\n";
    const QByteArray channel = board + "[[board.channel]]\n";
    const QByteArray content =
        "A channel needs either 'voltage' and 'current', or 'value', or 'values'";
    addMistake("a key of a board in a channel",
               channel + "name = 'V'\nvoltage = 1\ncounters = [0, 0, 0]\n",
               "line 6: A channel has no key 'counters'");
    addMistake("a channel without a name", channel + "voltage = 1\n",
               "line 3: A channel needs a name");
    addMistake("a channel without values", channel + "name = 'V'\n", "line 4: " + content);
    addMistake("a channel of two kinds", channel + "name = 'V'\nvoltage = 1\nvalue = 'x'\n",
               "line 4: " + content);
    addMistake("a value and values", channel + "name = 'V'\nvalue = 'x'\nvalues = ['y']\n",
               "line 4: " + content);
    addMistake("a voltage of text", channel + "name = 'V'\nvoltage = '1V'\n",
               "line 5: 'voltage' must be a number, 0 or more");
    addMistake("values that are no texts", channel + "name = 'V'\nvalues = [1]\n",
               "line 5: 'values' must be a list of texts without line breaks");
}

void TestSimulatorScenario::aMistakeInAChannelIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, complaint);
    checkMistake(text, complaint);
}

void TestSimulatorScenario::aMistakeInAFaultIsTold_data()
{
    addColumns();
    const QByteArray fault = "[[fault]]\n";
    addMistake("a fault without a kind", fault + "command = 'board'\n",
               "line 1: A fault needs the key 'kind'");
    addMistake("a fault of no kind", fault + "kind = 'sleepy'\n",
               "line 2: There is no fault of the kind 'sleepy'");
    addMistake("a key of another kind", fault + "kind = 'never'\ndelay_ms = 5\n",
               "line 3: A fault has no key 'delay_ms'");
    addMistake("times below 0", fault + "kind = 'never'\ntimes = -1\n",
               "line 3: 'times' must be a whole number from 0 to 1000000000");
    addMistake("a broken number of times", fault + "kind = 'never'\ntimes = 1.5\n",
               "line 3: 'times' must be a whole number from 0 to 1000000000");
    addMistake("a delay of hours", fault + "kind = 'late'\ndelay_ms = 3600001\n",
               "line 3: 'delay_ms' must be a whole number from 0 to 3600000");
    addMistake("nothing to hold for", fault + "kind = 'hold'\n",
               "line 1: A fault needs the key 'file'");
    addMistake("nothing to split at", fault + "kind = 'split'\n",
               "line 1: A split needs 'at' or 'every'");
    addMistake("a piece of no bytes", fault + "kind = 'split'\nevery = 0\n",
               "line 3: 'every' must be a whole number from 1 to 1000000000");
    addMistake("no size", fault + "kind = 'large'\n", "line 1: A large answer needs 'bytes'");
    addMistake("no text", fault + "kind = 'reply'\n",
               "line 1: This fault needs either 'text' or 'hex'");
    addMistake("text and hex", fault + "kind = 'after'\ntext = 'a'\nhex = '61'\n",
               "line 4: This fault needs either 'text' or 'hex'");
    addMistake("half a byte", fault + "kind = 'before'\nhex = '616'\n",
               "line 3: 'hex' must be bytes of two hexadecimal digits each");
    addMistake("no digits", fault + "kind = 'before'\nhex = '0x61'\n",
               "line 3: 'hex' must be bytes of two hexadecimal digits each");
    addMistake("a signal of no meaning", fault + "kind = 'kill'\nsignal = 0\n",
               "line 3: 'signal' must be a whole number from 1 to 64");
    addMistake("a refusal of two lines", fault + "kind = 'refused'\nmessage = \"a\\nb\"\n",
               "line 3: 'message' must not hold a line break");
}

void TestSimulatorScenario::aMistakeInAFaultIsTold()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, complaint);
    checkMistake(text, complaint);
}

void TestSimulatorScenario::aScenarioThatIsMissingIsTold()
{
    SimulatedTool tool;
    tool.start();
    QCOMPARE(tool.ask("board list"),
             "Error: Scenario " + QFile::encodeName(tool.getPath(QStringLiteral("scenario.toml"))) +
                 ": No such file or directory\nCOMMAND FAILED\n");
    QCOMPARE(tool.ask("board get mode"), QByteArray("Error: No board selected\nCOMMAND FAILED\n"));
}

void TestSimulatorScenario::aScenarioThatIsAFolderIsTold()
{
    SimulatedTool tool;
    QVERIFY(QDir().mkpath(tool.getPath(QStringLiteral("scenario.toml"))));
    tool.start();
    QVERIFY(tool.ask("board list").endsWith(": Is a directory\nCOMMAND FAILED\n"));
}

void TestSimulatorScenario::anEmptyScenarioHasNoBoards()
{
    SimulatedTool tool;
    tool.setWholeScenario({});
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 0"));
}

void TestSimulatorScenario::aBrokenScenarioLeavesTheBenchAsItWas()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board set mode 'Master SPI'");
    tool.setScenario("[[board]\n");
    QVERIFY(tool.ask("board list").startsWith("Error: Scenario "));
    QVERIFY(tool.ask("board list").endsWith("COMMAND FAILED\n"));
    QCOMPARE(tool.ask("board get mode"), said("Master SPI"));
    tool.setScenario(getOneBoard());
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n* 0x534B0001 KS-Dev A"));
    QCOMPARE(tool.ask("board get mode"), said("Master SPI"));
}

void TestSimulatorScenario::aScenarioThatComesLateIsTaken()
{
    SimulatedTool tool;
    tool.start();
    QVERIFY(tool.ask("board list").startsWith("Error: "));
    tool.setScenario(getOneBoard());
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n* 0x534B0001 KS-Dev A"));
    QCOMPARE(tool.getJournal(), QByteArray("board list\n"));
}

void TestSimulatorScenario::anyOtherCommandDoesNotReadTheScenario()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board list");
    tool.setScenario(getOneBoard() + "mode = 'Other'\n");
    QCOMPARE(tool.ask("board get mode"), said("Jtag only"));
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), said("Other"));
}

void TestSimulatorScenario::boardsComeAndGo()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'B'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 B"));
    tool.setScenario("[[board]]\nname = 'B'\n[[board]]\nname = 'A'\n");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 B\n- 0x534B0002 A"));
    tool.setScenario("[[board]]\nname = 'A'\n");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 A"));
    tool.setScenario({});
    QCOMPARE(tool.ask("board list"), said("Boards connected: 0"));
}

void TestSimulatorScenario::aBoardThatStaysKeepsItsState()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'B'\nselected = true\n");
    tool.start();
    tool.ask("board set mode 'Master SPI'");
    tool.ask("board set force_bit on");
    tool.setScenario("[[board]]\nname = 'A'\n[[board]]\nname = 'B'\nselected = true\n");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 A\n* 0x534B0002 B"));
    QCOMPARE(tool.ask("board get mode"), said("Master SPI"));
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is set"));
}

void TestSimulatorScenario::aBoardThatComesBackBeginsAnew()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board set mode 'Master SPI'");
    tool.ask("board set force_bit on");
    tool.setScenario({});
    tool.ask("board list");
    tool.setScenario(getOneBoard());
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), said("Jtag only"));
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is not set"));
}

void TestSimulatorScenario::aSelectedBoardThatGoesLeavesNoneSelected()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'A'\n[[board]]\nname = 'B'\n");
    tool.start();
    tool.ask("board select 0");
    tool.setScenario("[[board]]\nname = 'B'\n");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 B"));
    QCOMPARE(tool.ask("board get mode"), QByteArray("Error: No board selected\nCOMMAND FAILED\n"));
    // It does not come back as the selected one.
    tool.setScenario("[[board]]\nname = 'A'\n");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 A"));
}

void TestSimulatorScenario::theMarkOfTheScenarioSelectsWhenItMoves()
{
    const QByteArray first = "[[board]]\nname = 'A'\nselected = true\n[[board]]\nname = 'B'\n";
    const QByteArray second = "[[board]]\nname = 'A'\n[[board]]\nname = 'B'\nselected = true\n";
    SimulatedTool tool;
    tool.setScenario(first);
    tool.start();
    tool.ask("board select 1");
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 A\n* 0x534B0002 B"));
    tool.ask("board select 0");
    tool.setScenario(second);
    QCOMPARE(tool.ask("board list"), said("Boards connected: 2\n- 0x534B0001 A\n* 0x534B0002 B"));
}

void TestSimulatorScenario::aChangeOfTheScenarioReachesABoardThatStays()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board set force_bit on");
    tool.setScenario(getOneBoard() + "force_bit = 'unreadable'\ncapture = 'refused'\n"
                                     "[[board.channel]]\nname = 'T'\nvalue = '1'\n");
    tool.ask("board list");
    QVERIFY(tool.ask("board get force_bit").startsWith("Error: "));
    QVERIFY(tool.ask("ksscope capture x 1E6").startsWith("Error: Capture refused"));
    QCOMPARE(tool.ask("board monitor get 0"), said("T: 1"));
    tool.setScenario(getOneBoard() + "force_bit = 'clear'\n");
    tool.ask("board list");
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is not set"));
    tool.setScenario(getOneBoard() + "force_bit = 'set'\n");
    tool.ask("board list");
    QCOMPARE(tool.ask("board get force_bit"), said("Forcebit is set"));
}

void TestSimulatorScenario::theListingKeepsTheOrderOfTheFile()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'C'\n[[board]]\nname = 'A'\n[[board]]\nname = 'B'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"),
             said("Boards connected: 3\n- 0x534B0001 C\n- 0x534B0002 A\n- 0x534B0003 B"));
}

void TestSimulatorScenario::anIdentifierCanBeGiven()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'a b c d e f'\nidentifier = '0x534BCAFE'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534BCAFE a b c d e f"));
}

void TestSimulatorScenario::aRawLineIsListedAsItStands()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nraw_line = '  *   0x534b0001\tlower case  '\n"
                     "[[board]]\nraw_line = ''\n"
                     "[[board]]\nname = 'A'\nraw_line = '* x 0x534B'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"),
             said("Boards connected: 1\n  *   0x534b0001\tlower case  \n\n* x 0x534B"));
}

void TestSimulatorScenario::aRawLineCountsAsTheBoardThatItNames()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'B'\nmode = 'of B'\n"
                     "[[board]]\nraw_line = ' - 0x534B0007  A  b c d e f and more'\nmode = 'of A'\n"
                     "[[board]]\nraw_line = 'a heading'\n");
    tool.start();
    tool.ask("board select 0");
    QCOMPARE(tool.ask("board get mode"), said("of A"));
    tool.ask("board select 1");
    QCOMPARE(tool.ask("board get mode"), said("of B"));
    QVERIFY(tool.ask("board select 2").startsWith("Error: "));
}

void TestSimulatorScenario::aRawLineCanRepeatAName()
{
    SimulatedTool tool;
    tool.setScenario("[[board]]\nname = 'A'\n[[board]]\nraw_line = '- 0x534B0009 A'\n");
    tool.start();
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 A\n- 0x534B0009 A"));
    QCOMPARE(tool.ask("board list"), said("Boards connected: 1\n- 0x534B0001 A\n- 0x534B0009 A"));
}

void TestSimulatorScenario::relativePathsBeginAtTheScenario()
{
    SimulatedTool tool;
    tool.process.setWorkingDirectory(QDir::rootPath());
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board get mode");
    QCOMPARE(tool.getJournal(), QByteArray("board get mode\n"));
}

void TestSimulatorScenario::startTextIsSaidBeforeAnyCommand()
{
    SimulatedTool tool;
    tool.setScenario("start_text = \"Welcome\\n\"\n");
    tool.start();
    QCOMPARE(tool.takeThrough("\n"), QByteArray("Welcome\n"));
    QCOMPARE(tool.ask("board list"), said("Boards connected: 0"));
}

void TestSimulatorScenario::startExitEndsBeforeAnyCommand()
{
    SimulatedTool tool;
    tool.setScenario("start_text = 'No licence'\nstart_exit = 3\n");
    tool.start();
    QCOMPARE(tool.waitForEnd(), QByteArray("No licence"));
    QCOMPARE(tool.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process.exitCode(), 3);
}

void TestSimulatorScenario::manyBoardsAreListed()
{
    constexpr int count = 1000;
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += "[[board]]\nname = 'Board " + QByteArray::number(i) + "'\n";
    }
    SimulatedTool tool;
    tool.setScenario(text);
    tool.start();
    QCOMPARE(tool.ask("board list").count("0x534B"), count);
    QCOMPARE(tool.ask("board select 999"), said("OK"));
}

QTEST_GUILESS_MAIN(TestSimulatorScenario)
#include "tst_simulator_scenario.moc"
