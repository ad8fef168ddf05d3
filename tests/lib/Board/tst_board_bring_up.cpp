#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>

#include <memory>

using Test::Bench;

namespace
{

const QStringList settings{"board set mode 'Jtag only'", "board set jtag_clock on",
                           "board set reset on", "board set reset off"};

const QStringList settingLines{
    "Mode successfully set to Jtag only", "Clock bit successfully set to on",
    "Reset bit successfully set to on", "Reset bit successfully set to off"};

} // namespace

/// The known state that a new board is driven to.
class TestBoardBringUp : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theSelectedBoardIsBroughtUpWithoutARestoredSelection();
    void anotherBoardIsBroughtUpAndTheSelectionRestored();
    void aThirdBoardLeavesTheSecondSelected();
    void anEmptyNameDoesNothing();
    void aRefusalDoesNotStopTheRun();
    void theBitsAreRememberedWhateverTheToolReplied();
    void theBitsAreStoredAfterTheCommands();
    void theBitsGoToTheNewBoardAndNotToTheSelectedOne();
    void withoutASelectionTheRefusedRestoreKeepsTheNewBoard();
    void withoutASelectionTheAcceptedRestoreSelectsNothing();
    void theConsoleTellsEachStep();

private:
    Board::KSBaseHandler* engine() const { return panel->getEngine(); }
    void list(const QString& scenario)
    {
        bench->setScenario(scenario);
        bench->takeJournal();
        recorder->clear();
        engine()->refreshTamsaMap();
    }
    QString getSelected() const
    {
        const Board::Tamsa* const selected = engine()->getSelectedTamsa();
        return selected == nullptr ? QString() : QString::fromStdString(selected->getName());
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::ConsoleRecorder> recorder;
    std::unique_ptr<Test::Panel> panel;
};

void TestBoardBringUp::init()
{
    bench = std::make_unique<Bench>();
    recorder = std::make_unique<Test::ConsoleRecorder>();
    panel = std::make_unique<Test::Panel>();
}

void TestBoardBringUp::cleanup()
{
    panel.reset();
    recorder.reset();
    bench.reset();
}

void TestBoardBringUp::theSelectedBoardIsBroughtUpWithoutARestoredSelection()
{
    list(Bench::board("Aurora", "selected = true"));
    // The pages read the board once it is there; the bring-up comes before.
    const QStringList journal = bench->takeJournal();
    QCOMPARE(journal.mid(0, 6), QStringList({"board list", "board select 0"}) + settings);
    QCOMPARE(journal.count("board select 0"), 1);
    QCOMPARE(getSelected(), QString("Aurora"));
}

void TestBoardBringUp::anotherBoardIsBroughtUpAndTheSelectionRestored()
{
    list(Bench::board("Borealis", "selected = true"));
    list(Bench::board("Borealis", "selected = true") + Bench::board("Aurora"));
    QCOMPARE(bench->takeJournal(), QStringList({"board list", "board select 0"}) + settings +
                                       QStringList({"board select 1"}));
    QCOMPARE(getSelected(), QString("Borealis"));
}

void TestBoardBringUp::aThirdBoardLeavesTheSecondSelected()
{
    const QString two = Bench::board("Aurora") + Bench::board("Borealis", "selected = true");
    list(two);
    list(two + Bench::board("Corona"));
    QCOMPARE(bench->takeJournal(), QStringList({"board list", "board select 2"}) + settings +
                                       QStringList({"board select 1"}));
    QCOMPARE(getSelected(), QString("Borealis"));
}

void TestBoardBringUp::anEmptyNameDoesNothing()
{
    bench->takeJournal();
    recorder->clear();
    engine()->initialize("");
    QCOMPARE(bench->takeJournal(), QStringList());
    QCOMPARE(recorder->getLines(), QStringList());
}

void TestBoardBringUp::aRefusalDoesNotStopTheRun()
{
    list(Bench::board("Aurora", "selected = true") +
         Bench::fault("board set mode", "kind = \"refused\"\nmessage = \"no\"\ntimes = 0") +
         Bench::fault("board select", "kind = \"refused\"\nmessage = \"no\"\ntimes = 0"));
    QCOMPARE(bench->takeJournal().mid(0, 6),
             QStringList({"board list", "board select 0"}) + settings);
    QCOMPARE(recorder->getLines().mid(0, 6),
             QStringList({"Connected Aurora", "E: Selection failed", "E: Mode change failed"}) +
                 settingLines.mid(1));
}

void TestBoardBringUp::theBitsAreRememberedWhateverTheToolReplied()
{
    list(Bench::board("Aurora", "selected = true") +
         Bench::fault("board set", "kind = \"refused\"\nmessage = \"no\"\ntimes = 0"));
    QVERIFY(!engine()->getTamsa("Aurora")->getResetBit());
    QVERIFY(engine()->getTamsa("Aurora")->getClockBit());
}

void TestBoardBringUp::theBitsAreStoredAfterTheCommands()
{
    // The pulse goes up and, as far as the commands tell, not down again.
    list(Bench::board("Aurora", "selected = true") +
         Bench::fault("board set reset off", "kind = \"refused\"\nmessage = \"no\"\ntimes = 0"));
    QVERIFY(recorder->contains("E: Reset failed"));
    QVERIFY(!engine()->getTamsa("Aurora")->getResetBit());
}

void TestBoardBringUp::theBitsGoToTheNewBoardAndNotToTheSelectedOne()
{
    const QString first = Bench::board("Aurora", "selected = true");
    list(first);
    engine()->setResetBit(true);
    engine()->setClockBit(false);
    list(first + Bench::board("Borealis"));
    QVERIFY(!engine()->getTamsa("Borealis")->getResetBit());
    QVERIFY(engine()->getTamsa("Borealis")->getClockBit());
    QVERIFY(engine()->getTamsa("Aurora")->getResetBit());
    QVERIFY(!engine()->getTamsa("Aurora")->getClockBit());
}

void TestBoardBringUp::withoutASelectionTheRefusedRestoreKeepsTheNewBoard()
{
    list(Bench::board("Aurora") +
         Bench::reply("board list", "- 0x534B1 Aurora\nCOMMAND SUCCEEDED\n"));
    // The pages read the board once it is there; the bring-up comes before.
    QCOMPARE(bench->takeJournal().mid(0, 7), QStringList({"board list", "board select 0"}) +
                                                 settings + QStringList({"board select -1"}));
    QCOMPARE(recorder->getLines().mid(1, 6), QStringList({"Board succesfully selected"}) +
                                                 settingLines +
                                                 QStringList({"E: Selection failed"}));
    QCOMPARE(getSelected(), QString("Aurora"));
}

void TestBoardBringUp::withoutASelectionTheAcceptedRestoreSelectsNothing()
{
    list(Bench::reply("board list", "- 0x534B1 Aurora\nCOMMAND SUCCEEDED\n") +
         Bench::reply("board s", "OK\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(bench->takeJournal().mid(0, 7), QStringList({"board list", "board select 0"}) +
                                                 settings + QStringList({"board select -1"}));
    QCOMPARE(recorder->getLines().mid(1, 6), QStringList({"Board succesfully selected"}) +
                                                 settingLines +
                                                 QStringList({"Board succesfully selected"}));
    QCOMPARE(getSelected(), QString());
}

void TestBoardBringUp::theConsoleTellsEachStep()
{
    const QString first = Bench::board("Aurora", "selected = true");
    list(first);
    list(first + Bench::board("Borealis"));
    QCOMPARE(recorder->getLines(),
             QStringList({"Connected Borealis", "Board succesfully selected"}) + settingLines +
                 QStringList({"Board succesfully selected"}));
}

KESTOBOARD_TEST_MAIN(TestBoardBringUp)

#include "tst_board_bring_up.moc"
