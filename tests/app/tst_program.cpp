// The panel as a whole, run in a process of its own.

#include "Program.h"
#include "support/Bench.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <csignal>

using Test::Bench;
using Test::Program;

namespace
{

const int patience = 60'000;

QString toolEnded()
{
    return QStringLiteral("ksbase2 process has finished. This should not happen");
}

} // namespace

#define WAIT_FOR(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience)

class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void helpAndVersionNeedNoDisplay_data();
    void helpAndVersionNeedNoDisplay();
    void withoutADisplayItSaysWhatToDo();
    void aDisplayThatCannotBeOpenedIsNamed();
    void aRefusedOptionHasStatusOne();
    void aMissingToolIsNamedWithItsRemedy();
    void anUnwritableTranscriptIsNamedWithItsRemedy();
    void aListingWithoutANameIsToldAndEndsIt();
    void theToolsEndIsToldOnStandardError();
    void theToolsEndDuringACommandIsToldOnStandardError();
    void theToolsEndDuringALoadLeavesItUnknown();
    void theToolsEndBeforeTheWindowIsToldOnStandardError();
    void aToolThatCannotBeStartedIsTold();
    void aToolThatOnlyClosesItsInputIsNotSaidToHaveEnded();
    void theToolsEndKeepsTheSettings();
    void aSignalEndsAnIdlePanelInOrder_data();
    void aSignalEndsAnIdlePanelInOrder();
    void aSignalEndsAWaitingPanelInOrder_data();
    void aSignalEndsAWaitingPanelInOrder();
    void aSignalEndsAPanelThatIsStarting();
    void anInterruptThatAlsoEndsTheToolHasStatusZero();
    void manySignalsAtOddMomentsEndItInOrder();
    void aSecondPanelInTheSameDirectoryIsRefused();
    void aPanelOfAnotherComputerIsNamedWithTheRemedy();
    void theDirectoryIsFreeAgainAfterwards();
    void itWorksInTheGivenDirectory();
    void aTourLoadsABitstreamAndSavesEveryPage();
    void aTourIntoAPlaceThatCannotBeMadeFails();
    void aTourWithAToolThatRefusesTheBitstreamFails();

private:
    /// Has the panel find a shell script as its tool.
    void setTool(const QByteArray& script);
    /// Starts the panel and waits until its boards are listed and brought up.
    void startPanel(const QStringList& arguments = {});

    /// The process of the panel's board tool.
    pid_t getTool() const;

    QScopedPointer<Bench> bench;
    QScopedPointer<Program> program;
};

void TestProgram::init()
{
    bench.reset(new Bench);
    program.reset(new Program);
}

void TestProgram::cleanup()
{
    program.reset();
    bench.reset();
}

void TestProgram::setTool(const QByteArray& script)
{
    bench->setTool(script);
    program->setVariable("PATH", qEnvironmentVariable("PATH"));
}

void TestProgram::startPanel(const QStringList& arguments)
{
    program->start(arguments);
    // The window shows after the first listing and then asks for what its first page needs.
    WAIT_FOR(bench->count("board get force_bit") > 0 || !program->isRunning());
    QVERIFY2(program->isRunning(), qPrintable(program->getErrors()));
}

pid_t TestProgram::getTool() const
{
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(program->getId()));
    return children.open(QIODevice::ReadOnly) ? children.readAll().simplified().toInt() : 0;
}

void TestProgram::helpAndVersionNeedNoDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("text");
    QTest::newRow("--help") << "--help"
                            << "--tour <DIR>";
    QTest::newRow("--version") << "--version"
                               << "Kestoboard 1.";
}

void TestProgram::helpAndVersionNeedNoDisplay()
{
    QFETCH(QString, option);
    QFETCH(QString, text);
    program->removeVariable("QT_QPA_PLATFORM");
    QVERIFY(program->run({option}));
    QCOMPARE(program->getStatus(), 0);
    QVERIFY2(program->getOutput().contains(text), qPrintable(program->getOutput()));
    QCOMPARE(program->getErrors(), QString());
}

void TestProgram::withoutADisplayItSaysWhatToDo()
{
    program->removeVariable("QT_QPA_PLATFORM");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY(program->getErrors().contains("There is no display"));
    QVERIFY(program->getErrors().contains("--tour"));
    QVERIFY(!QFile::exists("ksbase.log"));
}

void TestProgram::aDisplayThatCannotBeOpenedIsNamed()
{
    program->removeVariable("QT_QPA_PLATFORM");
    program->setVariable("DISPLAY", ":65432");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY2(program->getErrors().contains("The display cannot be opened"),
             qPrintable(program->getErrors()));
}

void TestProgram::aRefusedOptionHasStatusOne()
{
    QVERIFY(program->run({"--nonsense"}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY(program->getErrors().contains("Unknown option 'nonsense'"));
    QVERIFY(program->getErrors().contains("--help"));
}

void TestProgram::aMissingToolIsNamedWithItsRemedy()
{
    bench->writeFile("ksbase.log", "from before");
    program->setVariable("PATH", "/usr/bin:/bin");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY(program->getErrors().contains("ksbase2_cli is not on the search path"));
    QVERIFY(program->getErrors().contains("--simulate"));
    QCOMPARE(bench->readFile("ksbase.log"), QByteArray("from before"));
}

void TestProgram::anUnwritableTranscriptIsNamedWithItsRemedy()
{
    // A directory of that name cannot be written by anybody, whatever their rights.
    QDir().mkdir("ksbase.log");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY(
        program->getErrors().contains("ksbase.log cannot be written in " + QDir::currentPath()));
    QVERIFY(program->getErrors().contains("--directory"));
    QVERIFY(bench->getJournal().isEmpty());
}

void TestProgram::aListingWithoutANameIsToldAndEndsIt()
{
    bench->setScenario(Bench::reply("board list", "* 0x534B0001\nCOMMAND SUCCEEDED\n"));
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY2(program->getErrors().contains("Empty name"), qPrintable(program->getErrors()));
    QVERIFY(program->getErrors().contains("ksbase.log"));
}

void TestProgram::theToolsEndIsToldOnStandardError()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    startPanel();
    ::kill(getTool(), SIGKILL);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 1);
    const QString errors = program->getErrors();
    QVERIFY2(errors.contains(toolEnded()), qPrintable(errors));
    QVERIFY2(errors.contains("The board tool was ended by the signal 9."), qPrintable(errors));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
    QVERIFY(!errors.contains("nobody knows"));
    QVERIFY(errors.contains("Connected KS-Dev A"));
    QVERIFY(errors.contains(QDir::current().filePath("ksbase.log")));
}

void TestProgram::theToolsEndDuringACommandIsToldOnStandardError()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       Bench::fault("board get mode", "kind = \"kill\"\nsignal = 9\n"));
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY(program->getErrors().contains(toolEnded()));
    QVERIFY(!program->getErrors().contains("failed"));
}

void TestProgram::theToolsEndDuringALoadLeavesItUnknown()
{
    bench->writeFile("design.ksb", QByteArray(4096, 'k'));
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       Bench::fault("chip bitstream load", "kind = \"kill\"\nsignal = 9\n"));
    program->setPath(Program::getActorPath());
    QVERIFY(program->run({"load"}));
    QCOMPARE(program->getStatus(), 1);
    const QRegularExpression sentence(
        "\n\"chip bitstream load design.ksb\" had run for [^\n]* by then: nobody knows whether it "
        "worked.\n");
    QVERIFY2(program->getErrors().contains(sentence), qPrintable(program->getErrors()));
}

void TestProgram::theToolsEndBeforeTheWindowIsToldOnStandardError()
{
    bench->setScenario("start_text = \"no licence\"\nstart_exit = 2\n");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY2(program->getErrors().contains(toolEnded()), qPrintable(program->getErrors()));
}

void TestProgram::aToolThatCannotBeStartedIsTold()
{
    setTool("#!/no/such/interpreter\n");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    const QString errors = program->getErrors();
    QVERIFY2(errors.contains("The board tool could not be started: it is damaged, or made for "
                             "another machine.\n"),
             qPrintable(errors));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestProgram::aToolThatOnlyClosesItsInputIsNotSaidToHaveEnded()
{
    // It lives as long as its panel, and answers once, so that there is a second command.
    setTool("#!/bin/sh\n"
            "read -r line\n"
            "exec 0<&-\n"
            "printf '* 0x534B0001 KS-Dev A\\nCOMMAND SUCCEEDED\\n' >&2\n"
            "while kill -0 $PPID 2>/dev/null; do sleep 0.05; done\n");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    const QString errors = program->getErrors();
    QVERIFY2(errors.contains("The board tool does not listen any more: "), qPrintable(errors));
    QVERIFY(!errors.contains("ended with the status"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestProgram::theToolsEndKeepsTheSettings()
{
    program->setSetting("ScopeLeaf/filename", "kept.vcd");
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    startPanel();
    ::kill(getTool(), SIGKILL);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 1);
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QCOMPARE(program->getSetting("ScopeLeaf/filename").toString(), QString("kept.vcd"));
}

void TestProgram::aSignalEndsAnIdlePanelInOrder_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("termination") << SIGTERM;
    QTest::newRow("hangup") << SIGHUP;
}

void TestProgram::aSignalEndsAnIdlePanelInOrder()
{
    QFETCH(int, number);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    startPanel();
    program->signal(number);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 0);
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!program->getErrors().contains("failed"));
}

void TestProgram::aSignalEndsAWaitingPanelInOrder_data()
{
    aSignalEndsAnIdlePanelInOrder_data();
}

void TestProgram::aSignalEndsAWaitingPanelInOrder()
{
    QFETCH(int, number);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board get force_bit"));
    startPanel();
    program->signal(number);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 0);
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!program->getErrors().contains("failed"));
    QVERIFY(!program->getErrors().contains("Empty result"));
}

void TestProgram::aSignalEndsAPanelThatIsStarting()
{
    bench->setScenario(bench->hold("board list"));
    program->start({});
    WAIT_FOR(bench->count("board list") == 1);
    program->signal(SIGTERM);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 0);
}

void TestProgram::anInterruptThatAlsoEndsTheToolHasStatusZero()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board get force_bit"));
    startPanel();
    // As a terminal does: the panel and its tool get the signal, in either order of their ends.
    const pid_t tool = getTool();
    program->signal(SIGINT);
    ::kill(tool, SIGKILL);
    QVERIFY(program->waitForEnd());
    QCOMPARE(program->getStatus(), 0);
}

void TestProgram::manySignalsAtOddMomentsEndItInOrder()
{
    // Whatever the panel is at when the first lines have reached the tool.
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") + Bench::board("KS-Dev B"));
    for (int lines = 1; lines <= 16; ++lines) {
        Program panel;
        bench->takeJournal();
        const int before = bench->getJournal().size();
        panel.start({});
        WAIT_FOR(bench->getJournal().size() >= before + lines);
        panel.signal(SIGTERM);
        panel.signal(SIGTERM);
        QVERIFY(panel.waitForEnd());
        QVERIFY2(panel.getStatus() == 0, qPrintable(panel.getErrors()));
        QVERIFY(!panel.getErrors().contains("failed"));
    }
}

void TestProgram::aSecondPanelInTheSameDirectoryIsRefused()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    startPanel();
    const QByteArray transcript = bench->readFile("ksbase.log");
    Program second;
    QVERIFY(second.run({}));
    QCOMPARE(second.getStatus(), 1);
    QVERIFY2(second.getErrors().contains(QString("process %1").arg(program->getId())),
             qPrintable(second.getErrors()));
    QVERIFY(second.getErrors().contains("--directory"));
    QVERIFY(bench->readFile("ksbase.log").startsWith(transcript));
    QVERIFY(program->isRunning());
}

void TestProgram::aPanelOfAnotherComputerIsNamedWithTheRemedy()
{
    // Nobody can tell from here whether it still runs.
    bench->writeFile(".kestoboard.lock", "1\nkestoboard\nanother-computer\n");
    QVERIFY(program->run({}));
    QCOMPARE(program->getStatus(), 1);
    const QString errors = program->getErrors();
    QVERIFY2(errors.contains("process 1 on another-computer"), qPrintable(errors));
    QVERIFY2(errors.contains("If that panel has ended, remove the file .kestoboard.lock there."),
             qPrintable(errors));
    QVERIFY(!QFile::exists("ksbase.log"));
}

void TestProgram::theDirectoryIsFreeAgainAfterwards()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board get force_bit"));
    for (int run = 0; run < 2; ++run) {
        program.reset(new Program);
        const int before = bench->count("board get force_bit");
        program->start({});
        WAIT_FOR(bench->count("board get force_bit") > before || !program->isRunning());
        program->signal(SIGTERM);
        QVERIFY(program->waitForEnd());
        QCOMPARE(program->getStatus(), 0);
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList("ksbase.log"));
    }
}

void TestProgram::itWorksInTheGivenDirectory()
{
    QDir().mkdir("lab");
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    startPanel({"--directory", "lab"});
    QVERIFY(bench->readFile("lab/ksbase.log").startsWith(">>ksbase2_cli -s -x\n>board list\n"));
    QVERIFY(!QFile::exists("ksbase.log"));
    program->signal(SIGTERM);
    QVERIFY(program->waitForEnd());
}

void TestProgram::aTourLoadsABitstreamAndSavesEveryPage()
{
    program->removeVariable("QT_QPA_PLATFORM");
    program->removeVariable("KESTOBOARD_SCENARIO");
    program->setSetting("recentLoadList", QStringList("/kept.ksb"));
    QVERIFY(program->run({"--tour", "pictures"}));
    QVERIFY2(program->getStatus() == 0, qPrintable(program->getErrors()));
    QVERIFY(program->getOutput().contains("    Bitstream successfully sent\n"));
    for (const char* const page : {"basic", "monitoring", "bitstream", "scope"}) {
        for (const char* const boards : {"", "-no-board"}) {
            for (const char* const mode : {"", "-debug"}) {
                for (const char* const look : {"-light", "-dark"}) {
                    const QString name =
                        QString("pictures/%1%2%3%4.png").arg(page, boards, mode, look);
                    const QImage picture(name);
                    QVERIFY2(picture.width() >= 800 && picture.height() >= 600, qPrintable(name));
                }
            }
        }
    }
    for (const char* const state : {"recent-empty",
                                    "recent",
                                    "running",
                                    "late",
                                    "failed",
                                    "console-find",
                                    "menu-1",
                                    "menu-5",
                                    "dialog-open",
                                    "dialog-about",
                                    "dialog-keyboard",
                                    "dialog-ended",
                                    "dialog-starting",
                                    "dialog-leave",
                                    "dialog-directory-in-use",
                                    "dialog-no-tool",
                                    "small-basic",
                                    "small-monitoring",
                                    "small-bitstream",
                                    "small-scope"}) {
        const QImage light(QString("pictures/%1-light.png").arg(state));
        const QImage dark(QString("pictures/%1-dark.png").arg(state));
        QVERIFY2(light.width() >= 200 && light.height() >= 80, state);
        QCOMPARE(dark.size(), light.size());
        QVERIFY2(dark != light, state);
    }
    // Debug mode shows its button for command files.
    QVERIFY(QFile::exists("pictures/example.cmd"));
    QCOMPARE(program->getSetting("recentLoadList").toStringList(), QStringList("/kept.ksb"));
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("pictures"));
}

void TestProgram::aTourIntoAPlaceThatCannotBeMadeFails()
{
    bench->writeFile("taken", "a file");
    QVERIFY(program->run({"--tour", "taken"}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY2(program->getErrors().contains("cannot be made"), qPrintable(program->getErrors()));
}

void TestProgram::aTourWithAToolThatRefusesTheBitstreamFails()
{
    const QString scenario = bench->writeFile(
        "refusing.toml",
        (Bench::board("KS-Dev A",
                      "[[board.channel]]\nname = \"VCore\"\nvoltage = 1.0\ncurrent = 0.1\n") +
         Bench::fault("chip bitstream load", "kind = \"refused\"\nmessage = \"no\"\n"))
            .toUtf8());
    QVERIFY(program->run({"--tour", "pictures", "--simulate", scenario}));
    QCOMPARE(program->getStatus(), 1);
    QVERIFY2(program->getErrors().contains("did not take the bitstream"),
             qPrintable(program->getErrors()));
}

KESTOBOARD_TEST_MAIN(TestProgram)
#include "tst_program.moc"
