#include "PacketReader.h"
#include "SimulatedTool.h"

#include <Replies.h>

#include <QFile>
#include <QTest>

/// The text protocol: lines in, answers with marks out, the end, and the journal.
class TestSimulatorProtocol : public QObject
{
    Q_OBJECT

private slots:
    void wrongArgumentsGiveTheUsageAndStatusTwo_data();
    void wrongArgumentsGiveTheUsageAndStatusTwo();
    void helpAndVersionNeedNoCommands_data();
    void helpAndVersionNeedNoCommands();
    void theOptionsStandInAnyOrder();
    void withoutAScenarioThereIsOneBoard();
    void theEndOfInputIsTheEndWithStatusZero();
    void nothingGoesToStandardOutput();
    void aLastLineWithoutLineEndIsACommand();
    void anUnknownCommandIsRefused_data();
    void anUnknownCommandIsRefused();
    void aMarkInACommandDoesNotEndItsAnswer();
    void aLongUnknownCommandIsShortened();
    void shorteningKeepsCharactersWhole();
    void aLineMayEndWithACarriageReturn();
    void theWordsOfACommandMayStandApart();
    void anAnswerIsOneWrite_data();
    void anAnswerIsOneWrite();
    void theMarkOfALargeAnswerIsOneWrite();
    void manyCommandsAreAnsweredOneByOne();
    void theJournalHoldsEachLineAsItCame();
    void theJournalHasALineBeforeItsAnswer();
    void theJournalIsContinued();
    void aJournalThatWasRemovedComesAgain();
    void aJournalThatCannotBeOpenedIsToldByTheListing();
    void aToolThatNobodyReadsStopsWaiting();
};

void TestSimulatorProtocol::wrongArgumentsGiveTheUsageAndStatusTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one is missing") << QStringList{QStringLiteral("-s")};
    QTest::newRow("one stands twice") << QStringList{QStringLiteral("-s"), QStringLiteral("-s")};
    QTest::newRow("one too many") << QStringList{QStringLiteral("-s"), QStringLiteral("-x"),
                                                 QStringLiteral("-v")};
    QTest::newRow("unknown") << QStringList{QStringLiteral("--verbose")};
}

void TestSimulatorProtocol::wrongArgumentsGiveTheUsageAndStatusTwo()
{
    QFETCH(QStringList, arguments);
    SimulatedTool tool;
    tool.process.setArguments(arguments);
    tool.start();
    QCOMPARE(tool.waitForEnd(), QByteArray("Usage: ksbase2_cli -s -x, with commands on standard "
                                           "input and answers on standard error.\n"));
    QCOMPARE(tool.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process.exitCode(), 2);
}

void TestSimulatorProtocol::helpAndVersionNeedNoCommands_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QByteArray>("words");
    QTest::newRow("help") << QStringLiteral("--help") << QByteArray("KESTOBOARD_SCENARIO");
    QTest::newRow("version") << QStringLiteral("--version")
                             << QByteArray("ksbase2_cli (simulated) ");
}

void TestSimulatorProtocol::helpAndVersionNeedNoCommands()
{
    QFETCH(QString, argument);
    QFETCH(QByteArray, words);
    SimulatedTool tool;
    tool.process.setArguments({argument});
    tool.start();
    QCOMPARE(tool.waitForEnd(), QByteArray());
    QVERIFY(tool.process.readAllStandardOutput().contains(words));
    QCOMPARE(tool.process.exitCode(), 0);
}

void TestSimulatorProtocol::theOptionsStandInAnyOrder()
{
    SimulatedTool tool;
    tool.setScenario({});
    tool.process.setArguments({QStringLiteral("-x"), QStringLiteral("-s")});
    tool.start();
    QCOMPARE(tool.ask("board list"), QByteArray("Boards connected: 0\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorProtocol::withoutAScenarioThereIsOneBoard()
{
    SimulatedTool tool;
    tool.useNoScenario();
    tool.start();
    QCOMPARE(tool.ask("board list"), QByteArray("Boards connected: 1\n"
                                                "* 0x534B0001 KS-Dev 1 Aurora\n"
                                                "COMMAND SUCCEEDED\n"));
    QCOMPARE(tool.ask("board select 0"), QByteArray("OK\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(tool.ask("board get mode"), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(tool.ask("board monitor get 0").count('\n'), 5);
}

void TestSimulatorProtocol::theEndOfInputIsTheEndWithStatusZero()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board list");
    QCOMPARE(tool.finish(), QByteArray());
    QCOMPARE(tool.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process.exitCode(), 0);
}

void TestSimulatorProtocol::nothingGoesToStandardOutput()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.send("board list\nhelp\nnonsense\nboard get mode\n");
    tool.finish();
    QCOMPARE(tool.process.readAllStandardOutput(), QByteArray());
}

void TestSimulatorProtocol::aLastLineWithoutLineEndIsACommand()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.send("board get mode");
    QCOMPARE(tool.finish(), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorProtocol::anUnknownCommandIsRefused_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a word") << QByteArray("reboot");
    QTest::newRow("half a command") << QByteArray("board get");
    QTest::newRow("a longer word") << QByteArray("board listing");
    QTest::newRow("another case") << QByteArray("Board list");
    QTest::newRow("an empty line") << QByteArray();
    QTest::newRow("blanks") << QByteArray("  ");
    QTest::newRow("accents") << QByteArray("d\xC3\xA9marrer");
}

void TestSimulatorProtocol::anUnknownCommandIsRefused()
{
    QFETCH(QByteArray, line);
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(line),
             "Error: Unknown command '" + line + "', help lists the commands\nCOMMAND FAILED\n");
}

void TestSimulatorProtocol::aMarkInACommandDoesNotEndItsAnswer()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("say COMMAND SUCCEEDED or COMMAND FAILED\tor not"),
             QByteArray("Error: Unknown command 'say COMMAND_SUCCEEDED or COMMAND_FAILED?or not', "
                        "help lists the commands\nCOMMAND FAILED\n"));
}

void TestSimulatorProtocol::aLongUnknownCommandIsShortened()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    const QByteArray answer = tool.ask(QByteArray(1000000, 'x'));
    QVERIFY(answer.size() < 500);
    QVERIFY(answer.endsWith("\nCOMMAND FAILED\n"));
}

void TestSimulatorProtocol::shorteningKeepsCharactersWhole()
{
    // The 400th byte is the second one of an accented letter.
    const std::string text = std::string(399, 'x') + "\xC3\xA9" + "y";
    QCOMPARE(Simulator::getShown(text), std::string(399, 'x') + "...");
}

void TestSimulatorProtocol::aLineMayEndWithACarriageReturn()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("board get mode\r"), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorProtocol::theWordsOfACommandMayStandApart()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("  board \t get  mode "), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorProtocol::anAnswerIsOneWrite_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("a listing") << QByteArray("board list");
    QTest::newRow("a setter") << QByteArray("board set reset on");
    QTest::newRow("a refusal") << QByteArray("board get nothing");
    QTest::newRow("a long text") << QByteArray("help");
}

void TestSimulatorProtocol::anAnswerIsOneWrite()
{
    QFETCH(QByteArray, line);
    SimulatedTool files;
    files.setScenario(getOneBoard());
    PacketReader reader(files.getPath(QStringLiteral("scenario.toml")));
    const QByteArrayList packets = reader.ask(line, "\n");
    QCOMPARE(packets.size(), 1);
    QVERIFY(packets.first().endsWith("\nCOMMAND SUCCEEDED\n") ||
            packets.first().endsWith("\nCOMMAND FAILED\n"));
}

void TestSimulatorProtocol::theMarkOfALargeAnswerIsOneWrite()
{
    SimulatedTool files;
    files.setScenario(getOneBoard() + "[[fault]]\nkind = 'large'\nbytes = 9000\n");
    PacketReader reader(files.getPath(QStringLiteral("scenario.toml")));
    const QByteArrayList packets = reader.ask("board get mode", "SUCCEEDED\n");
    QVERIFY(packets.size() > 1);
    QCOMPARE(packets.last(), QByteArray("COMMAND SUCCEEDED\n"));
    QVERIFY(packets.first().startsWith("Jtag only\n"));
}

void TestSimulatorProtocol::manyCommandsAreAnsweredOneByOne()
{
    constexpr int count = 20000;
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.send(QByteArray("board get mode\nboard set reset on\n").repeated(count / 2));
    QCOMPARE(
        tool.finish(),
        QByteArray("Jtag only\nCOMMAND SUCCEEDED\nOK\nCOMMAND SUCCEEDED\n").repeated(count / 2));
    QCOMPARE(tool.getJournal().count('\n'), count);
}

void TestSimulatorProtocol::theJournalHoldsEachLineAsItCame()
{
    const QByteArray lines = QByteArray("board list\n  board  get mode \nx\r\n\n\xFF\xC3\xA9\n") +
                             QByteArray("a\0b\n", 4);
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.send(lines + "last");
    tool.finish();
    QCOMPARE(tool.getJournal(), lines + "last\n");
}

void TestSimulatorProtocol::theJournalHasALineBeforeItsAnswer()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "[[fault]]\nkind = 'hold'\nfile = 'go'\n");
    tool.start();
    tool.send("board get mode\n");
    QTRY_COMPARE(tool.getJournal(), QByteArray("board get mode\n"));
    QCOMPARE(tool.process.readAllStandardError(), QByteArray());
    tool.makeFile(QStringLiteral("go"), {});
    QCOMPARE(tool.takeAnswer(), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorProtocol::theJournalIsContinued()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("journal.txt"), "earlier\n");
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board get mode");
    QCOMPARE(tool.getJournal(), QByteArray("earlier\nboard get mode\n"));
}

void TestSimulatorProtocol::aJournalThatWasRemovedComesAgain()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board list");
    QVERIFY(QFile::remove(tool.getPath(QStringLiteral("journal.txt"))));
    tool.ask("board get mode");
    QCOMPARE(tool.getJournal(), QByteArray("board get mode\n"));
}

void TestSimulatorProtocol::aJournalThatCannotBeOpenedIsToldByTheListing()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board list");
    tool.setWholeScenario("journal = 'missing/journal.txt'\n");
    const QByteArray path = QFile::encodeName(tool.getPath(QStringLiteral("missing/journal.txt")));
    QCOMPARE(tool.ask("board list"),
             "Error: Journal " + path + ": No such file or directory\nCOMMAND FAILED\n");
    // Neither the boards nor the journal have changed.
    QCOMPARE(tool.ask("board get mode"), QByteArray("Jtag only\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(tool.getJournal(), QByteArray("board list\nboard list\nboard get mode\n"));
}

void TestSimulatorProtocol::aToolThatNobodyReadsStopsWaiting()
{
    SimulatedTool files;
    files.setScenario(getOneBoard() +
                      "[[fault]]\ncommand = 'board get'\nkind = 'hold'\nfile = 'never-made'\n");
    PacketReader reader(files.getPath(QStringLiteral("scenario.toml")));
    reader.write("board get mode\n");
    reader.closeReader();
    reader.closeWriteChannel();
    QVERIFY(reader.waitForFinished());
    QCOMPARE(reader.exitStatus(), QProcess::NormalExit);
    QCOMPARE(reader.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestSimulatorProtocol)
#include "tst_simulator_protocol.moc"
