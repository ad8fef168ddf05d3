#include "SimulatedTool.h"

#include <FlashImage.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

namespace
{

const QByteArray
    cleanCounters("Counters: 0 exception(s), 0 read32 timeout(s), 0 32bit word(s) read in error");

const QByteArray load("chip bitstream load ");
const QByteArray program("board spi flash program ");

QByteArray refused(const QByteArray& reason)
{
    return "Error: " + reason + "\nCOMMAND FAILED\n";
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("NO FILE");
}

} // namespace

/// The commands that move a file to a board.
class TestSimulatorTransfers : public QObject
{
    Q_OBJECT

private slots:
    void aGoodFileIsLoaded();
    void aPathIsTheRestOfTheLine_data();
    void aPathIsTheRestOfTheLine();
    void aRelativePathBeginsInTheWorkingDirectory();
    void aFileThatCannotBeUsedIsRefused_data();
    void aFileThatCannotBeUsedIsRefused();
    void countersOfTheScenarioAreShown();
    void theTextErrorHandlerWritesAReport();
    void noReportWithoutErrorsOrWithAnotherHandler();
    void aReportThatCannotBeWrittenIsAWarning();
    void theFlashHoldsTheFile();
    void eachBoardHasItsOwnFlash();
    void aRefusedFileLeavesTheFlash();
    void theStateFolderIsMade();
    void withoutAStateKeyTheStateIsTheUsers();
    void aStateFolderThatCannotBeMadeIsToldWithItsReason();
    void theFlashIsComparedWholeAndByteByByte_data();
    void theFlashIsComparedWholeAndByteByByte();
    void aFlashThatForgetsIsNoticed();
    void aFlashThatIsFullIsNoticed();
    void aTransferTakesTimeBySize_data();
    void aTransferTakesTimeBySize();
    void aTimeScaleOfZeroTakesNoTime();
    void aLargeFileIsMovedWhole();
};

void TestSimulatorTransfers::aGoodFileIsLoaded()
{
    SimulatedTool tool;
    const QByteArray path = tool.makeFile(QStringLiteral("design.ksb"), QByteArray(12345, '\x5A'));
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(load + path), "Sent 12345 bytes\n" + cleanCounters + "\nCOMMAND SUCCEEDED\n");
}

void TestSimulatorTransfers::aPathIsTheRestOfTheLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("my  first design.ksb");
    QTest::newRow("accents") << QStringLiteral("conçu à l'été.ksb");
    QTest::newRow("quotes") << QStringLiteral("\"design\" 'one'.ksb");
    QTest::newRow("a blank at its end") << QStringLiteral("design ");
    QTest::newRow("a mark") << QStringLiteral("COMMAND FAILED.ksb");
}

void TestSimulatorTransfers::aPathIsTheRestOfTheLine()
{
    QFETCH(QString, name);
    SimulatedTool tool;
    const QByteArray path = tool.makeFile(name, "bits");
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(load + path), "Sent 4 bytes\n" + cleanCounters + "\nCOMMAND SUCCEEDED\n");
    QCOMPARE(tool.ask(program + path),
             QByteArray("Programmed 4 bytes\nVerified 4 bytes\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorTransfers::aRelativePathBeginsInTheWorkingDirectory()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    tool.setScenario(getOneBoard());
    tool.start();
    QVERIFY(tool.ask(load + "design.ksb").contains(cleanCounters));
}

void TestSimulatorTransfers::aFileThatCannotBeUsedIsRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("missing") << QByteArray("missing.ksb")
                             << QByteArray("No such file or directory");
    QTest::newRow("none") << QByteArray() << QByteArray("A file must be named");
    QTest::newRow("a folder") << QByteArray("/") << QByteArray("Is a directory");
    QTest::newRow("empty") << QByteArray("empty.ksb") << QByteArray("The file is empty");
    QTest::newRow("below a file") << QByteArray("empty.ksb/x") << QByteArray("Not a directory");
    QTest::newRow("a link to itself")
        << QByteArray("loop.ksb") << QByteArray("Too many levels of symbolic links");
    QTest::newRow("too long") << QByteArray(5000, 'x') << QByteArray("File name too long");
    QTest::newRow("a device") << QByteArray("/dev/zero") << QByteArray("Not a regular file");
    QTest::newRow("fails in reading")
        << QByteArray("/proc/self/mem") << QByteArray("Input/output error");
}

void TestSimulatorTransfers::aFileThatCannotBeUsedIsRefused()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, reason);
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("empty.ksb"), {});
    QVERIFY(QFile::link(QStringLiteral("loop.ksb"), tool.getPath(QStringLiteral("loop.ksb"))));
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(load + path), refused(reason));
    QCOMPARE(tool.ask(program + path), refused(reason));
    QVERIFY(!QFile::exists(tool.getPath(QStringLiteral("state"))));
}

void TestSimulatorTransfers::countersOfTheScenarioAreShown()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    tool.setScenario(getOneBoard() + "counters = [1, 20, 300]\n");
    tool.start();
    QCOMPARE(tool.ask(load + "design.ksb"),
             QByteArray("Sent 4 bytes\nCounters: 1 exception(s), 20 read32 timeout(s), "
                        "300 32bit word(s) read in error\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorTransfers::theTextErrorHandlerWritesAReport()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    tool.setScenario(getOneBoard() + "counters = [0, 0, 7]\n");
    tool.start();
    tool.ask("chip bitstream err_handler select Text outfilepath=load errors.txt");
    QVERIFY(tool.ask(load + "design.ksb").contains("\nError report written to load errors.txt\n"));
    QCOMPARE(readAll(tool.getPath(QStringLiteral("load errors.txt"))),
             QByteArray("Counters: 0 exception(s), 0 read32 timeout(s), "
                        "7 32bit word(s) read in error\n"));
}

void TestSimulatorTransfers::noReportWithoutErrorsOrWithAnotherHandler()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("chip bitstream err_handler select Text outfilepath=errors.txt");
    QVERIFY(!tool.ask(load + "design.ksb").contains("report"));
    tool.setScenario(getOneBoard() + "counters = [0, 0, 7]\n");
    tool.ask("board list");
    tool.ask("chip bitstream err_handler select Silent outfilepath=errors.txt");
    QVERIFY(!tool.ask(load + "design.ksb").contains("report"));
    QVERIFY(!QFile::exists(tool.getPath(QStringLiteral("errors.txt"))));
}

void TestSimulatorTransfers::aReportThatCannotBeWrittenIsAWarning()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    tool.setScenario(getOneBoard() + "counters = [0, 0, 7]\n");
    tool.start();
    tool.ask("chip bitstream err_handler select Text outfilepath=missing/errors.txt");
    const QByteArray answer = tool.ask(load + "design.ksb");
    QVERIFY(answer.contains("\nWarning, no error report could be written to missing/errors.txt\n"));
    QVERIFY(answer.endsWith("7 32bit word(s) read in error\nCOMMAND SUCCEEDED\n"));
}

void TestSimulatorTransfers::theFlashHoldsTheFile()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("first.bts"), "the first image, a long one");
    tool.makeFile(QStringLiteral("second.bts"), "the second");
    tool.setScenario(getOneBoard());
    tool.start();
    const QString image = tool.getPath(QStringLiteral("state/KS-Dev%20A.flash"));
    tool.ask(program + "first.bts");
    QCOMPARE(readAll(image), QByteArray("the first image, a long one"));
    tool.ask(program + "second.bts");
    QCOMPARE(readAll(image), QByteArray("the second"));
}

void TestSimulatorTransfers::eachBoardHasItsOwnFlash()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("one.bts"), "one");
    tool.makeFile(QStringLiteral("two.bts"), "two");
    tool.setScenario("[[board]]\nname = '../A'\n[[board]]\nname = '\xC3\xA9'\n");
    tool.start();
    tool.ask("board select 0");
    tool.ask(program + "one.bts");
    tool.ask("board select 1");
    tool.ask(program + "two.bts");
    QCOMPARE(readAll(tool.getPath(QStringLiteral("state/%2E%2E%2FA.flash"))), QByteArray("one"));
    QCOMPARE(readAll(tool.getPath(QStringLiteral("state/%C3%A9.flash"))), QByteArray("two"));
}

void TestSimulatorTransfers::aRefusedFileLeavesTheFlash()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask(program + "good.bts");
    tool.ask(program + "missing.bts");
    const QDir state(tool.getPath(QStringLiteral("state")));
    QCOMPARE(state.entryList(QDir::Files), QStringList{QStringLiteral("KS-Dev%20A.flash")});
    QCOMPARE(readAll(state.filePath(QStringLiteral("KS-Dev%20A.flash"))), QByteArray("good"));
}

void TestSimulatorTransfers::theStateFolderIsMade()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    tool.setWholeScenario("state = 'deep/inside'\ntime_scale = 0\n" + getOneBoard());
    tool.start();
    tool.ask(program + "good.bts");
    QCOMPARE(readAll(tool.getPath(QStringLiteral("deep/inside/KS-Dev%20A.flash"))),
             QByteArray("good"));
}

void TestSimulatorTransfers::withoutAStateKeyTheStateIsTheUsers()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    tool.setWholeScenario("time_scale = 0\n" + getOneBoard());
    tool.start();
    tool.ask(program + "good.bts");
    QCOMPARE(readAll(tool.getPath(QStringLiteral("home/kestoboard-simulator/KS-Dev%20A.flash"))),
             QByteArray("good"));
}

void TestSimulatorTransfers::aStateFolderThatCannotBeMadeIsToldWithItsReason()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    tool.setWholeScenario("state = 'good.bts/state'\ntime_scale = 0\n" + getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(program + "good.bts"),
             refused("The flash cannot be written: Not a directory"));
}

void TestSimulatorTransfers::theFlashIsComparedWholeAndByteByByte_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("same");
    QTest::newRow("the same") << QByteArray("image") << true;
    QTest::newRow("another byte") << QByteArray("imagE") << false;
    QTest::newRow("a byte less") << QByteArray("imag") << false;
    QTest::newRow("a byte more") << QByteArray("image2") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestSimulatorTransfers::theFlashIsComparedWholeAndByteByByte()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, same);
    SimulatedTool files;
    const std::string source = files.makeFile(QStringLiteral("image.bts"), "image").toStdString();
    files.makeFile(QStringLiteral("A.flash"), contents);
    const Simulator::FlashImage flash(QFile::encodeName(files.getPath({})).toStdString(), "A");
    QCOMPARE(flash.isSame(source), same);
}

void TestSimulatorTransfers::aFlashThatForgetsIsNoticed()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    QVERIFY(QDir().mkpath(tool.getPath(QStringLiteral("state"))));
    QVERIFY(QFile::link(QStringLiteral("/dev/null"),
                        tool.getPath(QStringLiteral("state/KS-Dev%20A.flash.new"))));
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(program + "good.bts"), refused("The flash does not hold what was written"));
}

void TestSimulatorTransfers::aFlashThatIsFullIsNoticed()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("good.bts"), "good");
    QVERIFY(QDir().mkpath(tool.getPath(QStringLiteral("state"))));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"),
                        tool.getPath(QStringLiteral("state/KS-Dev%20A.flash.new"))));
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask(program + "good.bts"),
             refused("The flash cannot be written: Input/output error"));
}

void TestSimulatorTransfers::aTransferTakesTimeBySize_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("load") << load;
    QTest::newRow("flash") << program;
}

void TestSimulatorTransfers::aTransferTakesTimeBySize()
{
    QFETCH(QByteArray, command);
    // 0.01 MB at 40 s/MB and half speed: 200 ms.
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), QByteArray(10000, 'x'));
    tool.setWholeScenario("state = 'state'\ntime_scale = 0.5\n" + getOneBoard() +
                          "load_seconds_per_mb = 40\nflash_seconds_per_mb = 40.0\n");
    tool.start();
    tool.ask("board list");
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tool.ask(command + "design.ksb").endsWith("COMMAND SUCCEEDED\n"));
    QVERIFY(timer.elapsed() >= 200);
}

void TestSimulatorTransfers::aTimeScaleOfZeroTakesNoTime()
{
    // At any other time scale this would take longer than any test runs.
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), QByteArray(10000, 'x'));
    tool.setScenario(getOneBoard() + "load_seconds_per_mb = 1e12\nflash_seconds_per_mb = 1e12\n");
    tool.start();
    QVERIFY(tool.ask(load + "design.ksb").endsWith("COMMAND SUCCEEDED\n"));
    QVERIFY(tool.ask(program + "design.ksb").endsWith("COMMAND SUCCEEDED\n"));
}

void TestSimulatorTransfers::aLargeFileIsMovedWhole()
{
    SimulatedTool tool;
    QByteArray contents(3500000, '\0');
    for (int i = 0; i < contents.size(); ++i) {
        contents[i] = static_cast<char>(i * 7 / 3);
    }
    tool.makeFile(QStringLiteral("large.ksb"), contents);
    tool.setScenario(getOneBoard());
    tool.start();
    QVERIFY(tool.ask(program + "large.ksb").startsWith("Programmed 3500000 bytes\n"));
    QVERIFY(readAll(tool.getPath(QStringLiteral("state/KS-Dev%20A.flash"))) == contents);
}

QTEST_GUILESS_MAIN(TestSimulatorTransfers)
#include "tst_simulator_transfers.moc"
