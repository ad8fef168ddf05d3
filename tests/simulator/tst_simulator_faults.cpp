#include "PacketReader.h"
#include "SimulatedTool.h"

#include <FaultInjector.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

namespace
{

const QByteArray mode("Jtag only\nCOMMAND SUCCEEDED\n");

QByteArray getFault(const QByteArray& kind, const QByteArray& keys = {},
                    const QByteArray& command = "board get mode")
{
    return "[[fault]]\ncommand = '" + command + "'\nkind = '" + kind + "'\n" + keys;
}

// The answer to "board get mode" under `fault`, write by write.
QByteArrayList getPieces(const QByteArray& fault, const QByteArray& end = "SUCCEEDED\n")
{
    SimulatedTool files;
    files.setScenario(getOneBoard() + fault);
    PacketReader reader(files.getPath(QStringLiteral("scenario.toml")));
    return reader.ask("board get mode", end);
}

} // namespace

/// Each kind of fault, and which commands a fault meets.
class TestSimulatorFaults : public QObject
{
    Q_OBJECT

private slots:
    void lateAnswersAfterItsDelay();
    void holdAnswersOnceTheFileExists();
    void neverAnswersNothingAndGoesOn();
    void refusedAnswersAnErrorAndDoesNothing();
    void splitCutsAtTheOffsets_data();
    void splitCutsAtTheOffsets();
    void splitWaitsForTheReaderOfEachPiece();
    void splitPausesBetweenItsPieces();
    void splitCutsInsideACharacter();
    void nulStandsBeforeTheMark();
    void nulStandsAtItsOffsets();
    void garbageLeavesOnlyTheMark();
    void beforeComesFirstAndByItself();
    void afterFollowsTheMark();
    void afterCanBeLate();
    void largeFillsTheAnswerUp();
    void stdoutGetsTheText();
    void exitEndsWithItsStatus();
    void killEndsWithItsSignal();
    void replyIsTheWholeAnswer();
    void replyCanHoldAnyBytes();
    void replyStandsInPlaceOfTheCommand();
    void closedInputLeavesTheToolAlive();
    void closedErrorOutputAnswersNothingMore();
    void faultsMeetUnknownCommandsToo();
    void faultsMeetTheListingThatReadsThem();
    void aRepliedListingStillReadsTheScenario();
    void severalFaultsMeetOneCommand();
    void aRefusalAndASplitWorkTogether();
    void aFaultMeetsTheCommandsThatItCounts_data();
    void aFaultMeetsTheCommandsThatItCounts();
    void aFaultThatStaysInTheScenarioGoesOnCounting();
    void aFaultThatIsChangedBeginsAnew();
    void twoEqualFaultsCountForThemselves();
};

void TestSimulatorFaults::lateAnswersAfterItsDelay()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("late", "delay_ms = 200\n"));
    tool.start();
    tool.ask("board list");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    QVERIFY(timer.elapsed() >= 200);
}

void TestSimulatorFaults::holdAnswersOnceTheFileExists()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("hold", "file = 'go'\n") +
                     getFault("before", "text = 'held'\n"));
    tool.start();
    // The text comes after the hold, so nothing can be there while it lasts.
    tool.send("board get mode\n");
    QTRY_COMPARE(tool.getJournal(), QByteArray("board get mode\n"));
    QVERIFY(!tool.process.waitForReadyRead(50));
    tool.makeFile(QStringLiteral("go"), {});
    QCOMPARE(tool.takeAnswer(), "held" + mode);
}

void TestSimulatorFaults::neverAnswersNothingAndGoesOn()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("never", {}, "board set mode"));
    tool.start();
    tool.send("board set mode 'Master SPI'\n");
    QCOMPARE(tool.ask("board get mode"), mode);
    tool.send("board set mode 'Master SPI'\n");
    QCOMPARE(tool.finish(), QByteArray("OK\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorFaults::refusedAnswersAnErrorAndDoesNothing()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() +
                     getFault("refused", "message = 'The fuse is blown'\n", "board set mode") +
                     getFault("refused", {}, "help"));
    tool.start();
    QCOMPARE(tool.ask("board set mode 'Master SPI'"),
             QByteArray("Error: The fuse is blown\nCOMMAND FAILED\n"));
    QCOMPARE(tool.ask("board get mode"), mode);
    QCOMPARE(tool.ask("help"), QByteArray("Error: Refused by the board\nCOMMAND FAILED\n"));
}

void TestSimulatorFaults::splitCutsAtTheOffsets_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::newRow("inside the mark")
        << QByteArray("at = [18]\n") << QByteArrayList{"Jtag only\nCOMMAND ", "SUCCEEDED\n"};
    QTest::newRow("from the end") << QByteArray("at = [-1, -4]\n")
                                  << QByteArrayList{"Jtag only\nCOMMAND SUCCEE", "DED", "\n"};
    QTest::newRow("in any order") << QByteArray("at = [9, 5, 9]\n")
                                  << QByteArrayList{"Jtag ", "only", "\nCOMMAND SUCCEEDED\n"};
    QTest::newRow("outside the answer")
        << QByteArray("at = [0, 28, 99, -28, -99]\n") << QByteArrayList{mode};
    QTest::newRow("every ten bytes")
        << QByteArray("every = 10\n") << QByteArrayList{"Jtag only\n", "COMMAND SU", "CCEEDED\n"};
    QTest::newRow("both") << QByteArray("every = 20\nat = [4]\n")
                          << QByteArrayList{"Jtag", " only\nCOMMAND SU", "CCEEDED\n"};
    QByteArrayList bytes;
    for (const char byte : mode) {
        bytes.append(QByteArray(1, byte));
    }
    QTest::newRow("byte by byte") << QByteArray("every = 1\n") << bytes;
}

void TestSimulatorFaults::splitCutsAtTheOffsets()
{
    QFETCH(QByteArray, keys);
    QFETCH(QByteArrayList, pieces);
    QCOMPARE(getPieces(getFault("split", keys)), pieces);
}

void TestSimulatorFaults::splitWaitsForTheReaderOfEachPiece()
{
    SimulatedTool files;
    files.setScenario(getOneBoard() + getFault("split", "every = 1\n"));
    PacketReader reader(files.getPath(QStringLiteral("scenario.toml")),
                        PacketReader::Writes::FlowTogether);
    QCOMPARE(reader.ask("board get mode", "SUCCEEDED\n").size(), mode.size());
}

void TestSimulatorFaults::splitPausesBetweenItsPieces()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("split", "at = [4, 20]\npause_ms = 100\n"));
    tool.start();
    tool.ask("board list");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    QVERIFY(timer.elapsed() >= 200);
}

void TestSimulatorFaults::splitCutsInsideACharacter()
{
    const QByteArrayList pieces =
        getPieces("mode = '5\xC2\xB0'\n" + getFault("split", "at = [2]\n"));
    QCOMPARE(pieces, (QByteArrayList{"5\xC2", "\xB0\nCOMMAND SUCCEEDED\n"}));
}

void TestSimulatorFaults::nulStandsBeforeTheMark()
{
    const QByteArrayList pieces = getPieces(getFault("nul"));
    QCOMPARE(pieces, (QByteArrayList{QByteArray("Jtag only\n\0", 11), "COMMAND SUCCEEDED\n"}));
}

void TestSimulatorFaults::nulStandsAtItsOffsets()
{
    const QByteArrayList pieces =
        getPieces(getFault("nul", "at = [0, 4, -1, 1000]\n"), QByteArray("\n\0", 2));
    QCOMPARE(pieces, QByteArrayList{QByteArray("\0Jtag\0 only\nCOMMAND SUCCEEDED\0\n\0", 32)});
}

void TestSimulatorFaults::garbageLeavesOnlyTheMark()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("garbage") +
                     getFault("garbage", "skip = 1\nbytes = 5000\n"));
    tool.start();
    const QByteArray noise = tool.ask("board get mode");
    QCOMPARE(noise.size(), 256 + 1 + 18);
    QVERIFY(noise.endsWith("\nCOMMAND SUCCEEDED\n"));
    QVERIFY(!noise.contains("Jtag"));
    QVERIFY(!noise.contains('\0'));
    QCOMPARE(noise.count('\n'), 2);
    const QByteArray more = tool.ask("board get mode");
    QCOMPARE(more.size(), 5000 + 1 + 18);
    QCOMPARE(more.left(256), noise.left(256));
    QVERIFY(!more.contains('\0'));
    QCOMPARE(more.count('\n'), 2);
    QCOMPARE(tool.ask("board get mode"), mode);
}

void TestSimulatorFaults::beforeComesFirstAndByItself()
{
    QCOMPARE(getPieces(getFault("before", "text = \"wait\\n\"\n")),
             (QByteArrayList{"wait\n", mode}));
}

void TestSimulatorFaults::afterFollowsTheMark()
{
    QCOMPARE(getPieces(getFault("after", "text = \"more\\n\"\n"), "more\n"),
             (QByteArrayList{mode, "more\n"}));
}

void TestSimulatorFaults::afterCanBeLate()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("after", "text = 'more.'\ndelay_ms = 100\n"));
    tool.start();
    tool.ask("board list");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    QCOMPARE(tool.takeThrough("."), QByteArray("more."));
    QVERIFY(timer.elapsed() >= 100);
}

void TestSimulatorFaults::largeFillsTheAnswerUp()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("large", "bytes = 10000000\n"));
    tool.start();
    const QByteArray answer = tool.ask("board get mode");
    QVERIFY(answer.size() >= 10000000);
    QVERIFY(answer.size() < 10000200);
    QVERIFY(answer.startsWith("Jtag only\n"));
    QVERIFY(answer.endsWith("\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(answer.count("COMMAND"), 1);
    QVERIFY(!answer.contains(": "));
    QCOMPARE(tool.ask("board get mode"), mode);
}

void TestSimulatorFaults::stdoutGetsTheText()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("stdout", "text = \"debug\\n\\nline\"\n"));
    tool.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    tool.finish();
    QCOMPARE(tool.process.readAllStandardOutput(), QByteArray("debug\n\nline"));
}

void TestSimulatorFaults::exitEndsWithItsStatus()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("exit", "status = 7\ntext = 'going'\n"));
    tool.start();
    tool.send("board get mode\n");
    QCOMPARE(tool.waitForEnd(), QByteArray("going"));
    QCOMPARE(tool.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.process.exitCode(), 7);
    QCOMPARE(tool.getJournal(), QByteArray("board get mode\n"));
}

void TestSimulatorFaults::killEndsWithItsSignal()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("kill", "signal = 15\ntext = 'dying'\n"));
    tool.start();
    tool.send("board get mode\n");
    QCOMPARE(tool.waitForEnd(), QByteArray("dying"));
    QCOMPARE(tool.process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(tool.process.exitCode(), SIGTERM);
}

void TestSimulatorFaults::replyIsTheWholeAnswer()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() +
                     getFault("reply", "text = \"OKAY COMMAND SUCCEEDED and more\"\n"));
    tool.start();
    tool.send("board get mode\nboard get mode\n");
    QCOMPARE(tool.finish(), "OKAY COMMAND SUCCEEDED and more" + mode);
}

void TestSimulatorFaults::replyCanHoldAnyBytes()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("reply", "hex = 'ff 00 C2 0a'\n"));
    tool.start();
    tool.send("board get mode\n");
    QCOMPARE(tool.finish(), QByteArray("\xFF\0\xC2\n", 4));
}

void TestSimulatorFaults::replyStandsInPlaceOfTheCommand()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() +
                     getFault("reply", "text = \"OK\\nCOMMAND SUCCEEDED\\n\"\n", "board set mode"));
    tool.start();
    QCOMPARE(tool.ask("board set mode 'Master SPI'"), QByteArray("OK\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(tool.ask("board get mode"), mode);
}

void TestSimulatorFaults::closedInputLeavesTheToolAlive()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("close_stdin"));
    tool.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    qRegisterMetaType<QProcess::ProcessError>();
    QSignalSpy errors(&tool.process, &QProcess::errorOccurred);
    tool.process.write("board get mode\n");
    QTRY_COMPARE(errors.count(), 1);
    QCOMPARE(errors.first().first().value<QProcess::ProcessError>(), QProcess::WriteError);
    QVERIFY(!tool.process.waitForFinished(100));
    QCOMPARE(tool.getJournal(), QByteArray("board get mode\n"));
}

void TestSimulatorFaults::closedErrorOutputAnswersNothingMore()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("close_stderr"));
    tool.start();
    QCOMPARE(tool.ask("help").right(18), QByteArray("COMMAND SUCCEEDED\n"));
    tool.send("board get mode\nhelp\n");
    QTRY_COMPARE(tool.getJournal(), QByteArray("help\nboard get mode\nhelp\n"));
    QCOMPARE(tool.process.state(), QProcess::Running);
    QCOMPARE(tool.finish(), QByteArray());
    QCOMPARE(tool.process.exitCode(), 0);
}

void TestSimulatorFaults::faultsMeetUnknownCommandsToo()
{
    SimulatedTool tool;
    tool.setScenario(getFault("reply", "text = \"COMMAND SUCCEEDED\\n\"\n", "self"));
    tool.start();
    QCOMPARE(tool.ask("self-test"), QByteArray("COMMAND SUCCEEDED\n"));
}

void TestSimulatorFaults::faultsMeetTheListingThatReadsThem()
{
    SimulatedTool tool;
    tool.setScenario({});
    tool.start();
    tool.setScenario(getFault("refused", "message = 'Bus down'\n", "board list"));
    QCOMPARE(tool.ask("board list"), QByteArray("Error: Bus down\nCOMMAND FAILED\n"));
}

void TestSimulatorFaults::aRepliedListingStillReadsTheScenario()
{
    SimulatedTool tool;
    tool.setScenario(
        getFault("reply", "times = 0\ntext = \"COMMAND SUCCEEDED\\n\"\n", "board list"));
    tool.start();
    QCOMPARE(tool.ask("board list"), QByteArray("COMMAND SUCCEEDED\n"));
    tool.setScenario(getOneBoard());
    QVERIFY(tool.ask("board list").contains("KS-Dev A"));
}

void TestSimulatorFaults::severalFaultsMeetOneCommand()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("before", "text = 'one '\n") +
                     getFault("before", "text = 'two '\n", "board") +
                     getFault("after", "text = 'three.'\n", ""));
    tool.start();
    QCOMPARE(tool.ask("board get mode"), "one two " + mode);
    QCOMPARE(tool.takeThrough("."), QByteArray("three."));
}

void TestSimulatorFaults::aRefusalAndASplitWorkTogether()
{
    const QByteArrayList pieces =
        getPieces(getFault("refused") + getFault("split", "at = [-3]\n"), "ED\n");
    QCOMPARE(pieces, (QByteArrayList{"Error: Refused by the board\nCOMMAND FAIL", "ED\n"}));
}

void TestSimulatorFaults::aFaultMeetsTheCommandsThatItCounts_data()
{
    QTest::addColumn<QByteArray>("prefix");
    QTest::addColumn<int>("skip");
    QTest::addColumn<int>("times");
    QTest::addColumn<QByteArray>("met");
    // The lines are "a", "ab", "b", "ab", "abc", "", "a"; a cross stands for each that is met.
    QTest::newRow("the first") << QByteArray("a") << 0 << 1 << QByteArray("x......");
    QTest::newRow("two") << QByteArray("ab") << 0 << 2 << QByteArray(".x.x...");
    QTest::newRow("all") << QByteArray("a") << 0 << 0 << QByteArray("xx.xx.x");
    QTest::newRow("all but one") << QByteArray("a") << 1 << 0 << QByteArray(".x.xx.x");
    QTest::newRow("one after two") << QByteArray("a") << 2 << 1 << QByteArray("...x...");
    QTest::newRow("every line") << QByteArray() << 0 << 0 << QByteArray("xxxxxxx");
    QTest::newRow("any line") << QByteArray() << 4 << 2 << QByteArray("....xx.");
    QTest::newRow("none") << QByteArray("abcd") << 0 << 0 << QByteArray(".......");
}

void TestSimulatorFaults::aFaultMeetsTheCommandsThatItCounts()
{
    QFETCH(QByteArray, prefix);
    QFETCH(int, skip);
    QFETCH(int, times);
    QFETCH(QByteArray, met);
    Simulator::FaultSetup fault;
    fault.command = prefix.toStdString();
    fault.skip = skip;
    fault.times = times;
    Simulator::FaultInjector injector;
    injector.setFaults({fault});
    QByteArray crosses;
    for (const char* line : {"a", "ab", "b", "ab", "abc", "", "a"}) {
        crosses += injector.takeDue(line).empty() ? '.' : 'x';
    }
    QCOMPARE(crosses, met);
}

void TestSimulatorFaults::aFaultThatStaysInTheScenarioGoesOnCounting()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("before", "text = 'odd '\nskip = 1\n"));
    tool.start();
    QCOMPARE(tool.ask("board get mode"), mode);
    tool.ask("board list");
    // Another fault in front of it makes no difference.
    tool.setScenario(getOneBoard() + getFault("never", {}, "nothing") +
                     getFault("before", "text = 'odd '\nskip = 1\n"));
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), "odd " + mode);
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), mode);
}

void TestSimulatorFaults::aFaultThatIsChangedBeginsAnew()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + getFault("before", "text = 'odd '\n"));
    tool.start();
    QCOMPARE(tool.ask("board get mode"), "odd " + mode);
    QCOMPARE(tool.ask("board get mode"), mode);
    tool.setScenario(getOneBoard() + getFault("before", "text = 'odd '\nnote = 'again'\n"));
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), "odd " + mode);
}

void TestSimulatorFaults::twoEqualFaultsCountForThemselves()
{
    SimulatedTool tool;
    const QByteArray fault = getFault("before", "text = 'odd '\n");
    tool.setScenario(getOneBoard() + fault + fault);
    tool.start();
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), "odd odd " + mode);
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), mode);
    // A third one is new, the first two are used up.
    tool.setScenario(getOneBoard() + fault + fault + fault);
    tool.ask("board list");
    QCOMPARE(tool.ask("board get mode"), "odd " + mode);
}

QTEST_GUILESS_MAIN(TestSimulatorFaults)
#include "tst_simulator_faults.moc"
