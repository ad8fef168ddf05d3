#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/CommandLineEdit.h>
#include <Board/KSBaseHandler.h>
#include <foundation/Exception.h>

#include <QPushButton>

#include <memory>
#include <stdexcept>

using Test::Bench;

/// Raw commands typed by a person, and the tool's help.
class TestCommandEntry : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void returnSendsTheCommandAndPrintsTheReply();
    void theButtonSendsTheCommandToo();
    void theFieldIsEmptyBeforeTheCommandRuns();
    void anEmptyFieldDoesNothing();
    void blanksAreSentAsTyped();
    void theHistoryKeepsWhatWasSent();
    void accentsGoOutAsUtf8();
    void aReplyInAnyEncodingIsPrintedAsItsBytes();
    void aSecondCommandRunsNestedInTheFirst();
    void aFailureIsReportedAndTheDepthRestored_data();
    void aFailureIsReportedAndTheDepthRestored();
    void outsideDebugModeTheSlotsDoNothing();
    void theHelpIsTheToolsReply();
    void theHelpLeavesTheFieldAlone();
    void aFailureOfTheHelpIsReportedAndTheDepthRestored();
    void aSecondPressOfHelpIsQueued();

private:
    void setScenario(const QString& text)
    {
        bench->setScenario(text);
        panel->getEngine()->refreshTamsaMap();
        bench->takeJournal();
        recorder->clear();
    }
    void type(const QString& text)
    {
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::DebugMode> debug;
    std::unique_ptr<Test::ConsoleRecorder> recorder;
    std::unique_ptr<Test::Panel> panel;
    Board::CommandLineEdit* field = nullptr;
};

void TestCommandEntry::init()
{
    bench = std::make_unique<Bench>();
    debug = std::make_unique<Test::DebugMode>(true);
    recorder = std::make_unique<Test::ConsoleRecorder>();
    panel = std::make_unique<Test::Panel>();
    field = panel->find<Board::CommandLineEdit>();
    bench->takeJournal();
    recorder->clear();
}

void TestCommandEntry::cleanup()
{
    bench->release();
    panel.reset();
    recorder.reset();
    debug.reset();
    bench.reset();
}

void TestCommandEntry::returnSendsTheCommandAndPrintsTheReply()
{
    setScenario(Bench::reply("hello", "one\n\n two\nCOMMAND FAILED\n"));
    type("hello there");
    QCOMPARE(bench->takeJournal(), QStringList({"hello there"}));
    QCOMPARE(recorder->getLines(),
             QStringList({"hello there", "  one", "  ", "   two", "  COMMAND FAILED", "  "}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandEntry::theButtonSendsTheCommandToo()
{
    setScenario(Bench::reply("hello", "COMMAND SUCCEEDED"));
    field->setText("hello");
    QTest::mouseClick(panel->findByText<QPushButton>("Send"), Qt::LeftButton);
    QCOMPARE(recorder->getLines(), QStringList({"hello", "  COMMAND SUCCEEDED"}));
}

void TestCommandEntry::theFieldIsEmptyBeforeTheCommandRuns()
{
    setScenario(bench->hold("board get mode"));
    QString shown = "never looked";
    Test::when(
        this, [this] { return bench->count("board get mode") == 1; },
        [&] {
            shown = field->text();
            bench->release();
        });
    type("board get mode");
    QCOMPARE(shown, QString());
}

void TestCommandEntry::anEmptyFieldDoesNothing()
{
    type("");
    QCOMPARE(bench->takeJournal(), QStringList());
    QCOMPARE(recorder->getLines(), QStringList());
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString());
}

void TestCommandEntry::blanksAreSentAsTyped()
{
    setScenario(Bench::reply("", "COMMAND FAILED"));
    type("  ");
    type("  a  b ");
    QCOMPARE(bench->takeJournal(), QStringList({"  ", "  a  b "}));
    QCOMPARE(recorder->getLines().first(), QString("  "));
    QTest::keyClick(field, Qt::Key_Up);
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString("  "));
}

void TestCommandEntry::theHistoryKeepsWhatWasSent()
{
    setScenario(Bench::reply("", "COMMAND FAILED"));
    type("first");
    type("second");
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString("second"));
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString("first"));
}

void TestCommandEntry::accentsGoOutAsUtf8()
{
    setScenario(Bench::reply("", "COMMAND FAILED"));
    type("caf\u00e9 \u65e5");
    QCOMPARE(bench->takeJournal(), QStringList({"caf\u00e9 \u65e5"}));
    QCOMPARE(recorder->getLines().first(), QString("caf\u00e9 \u65e5"));
}

void TestCommandEntry::aReplyInAnyEncodingIsPrintedAsItsBytes()
{
    setScenario(Bench::reply("hello", "41 \u00b0C \u00e0\nCOMMAND SUCCEEDED"));
    type("hello");
    QCOMPARE(recorder->getLines().at(1), QString("  41 \u00b0C \u00e0"));
}

void TestCommandEntry::aSecondCommandRunsNestedInTheFirst()
{
    setScenario(Bench::reply("second", "B\nCOMMAND SUCCEEDED") + bench->hold("board get mode"));
    Test::when(
        this, [this] { return bench->count("board get mode") == 1; },
        [this] {
            bench->release();
            type("second");
        });
    type("board get mode");
    const QStringList lines = recorder->getLines();
    QCOMPARE(lines.mid(0, 4),
             QStringList({"board get mode", "  second", "    B", "    COMMAND SUCCEEDED"}));
    QVERIFY(lines.at(4).startsWith("  "));
    QVERIFY(!lines.at(4).startsWith("    "));
    QCOMPARE(bench->takeJournal(), QStringList({"board get mode", "second"}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandEntry::aFailureIsReportedAndTheDepthRestored_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("report");
    QTest::newRow("its own") << "own"
                             << "out of order";
    QTest::newRow("standard") << "standard"
                              << "Processing aborted [out of order]";
    QTest::newRow("other") << "other"
                           << "Processing aborted [something strange...]";
}

void TestCommandEntry::aFailureIsReportedAndTheDepthRestored()
{
    QFETCH(QString, kind);
    QFETCH(QString, report);
    // What announces the command throws: the failure comes out of the sending itself.
    connect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, [kind] {
        if (kind == "own") {
            throw Orvex::Exception("out of order");
        }
        if (kind == "standard") {
            throw std::runtime_error("out of order");
        }
        throw 42;
    });
    type("board get mode");
    disconnect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, nullptr);
    const QStringList lines = recorder->getLines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.at(1).startsWith("  E: " + report), qPrintable(lines.at(1)));
    // A failure of the panel's own passes as it was thrown.
    QCOMPARE(lines.at(1).contains("onSendCommand"), kind != "own");
    QCOMPARE(lines.at(1).contains("src/lib/Board/MainWindow"), kind != "own");
    QCOMPARE(Orvex::console->getDepth(), 0);
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString("board get mode"));
}

void TestCommandEntry::outsideDebugModeTheSlotsDoNothing()
{
    field->setText("board get mode");
    const Test::DebugMode off(false);
    QVERIFY(QMetaObject::invokeMethod(panel->getWindow(), "onSendCommand"));
    QVERIFY(QMetaObject::invokeMethod(panel->getWindow(), "onHelp"));
    QCOMPARE(field->text(), QString("board get mode"));
    QCOMPARE(bench->takeJournal(), QStringList());
    QCOMPARE(recorder->getLines(), QStringList());
}

void TestCommandEntry::theHelpIsTheToolsReply()
{
    setScenario(Bench::reply("help", "one\ntwo\nCOMMAND SUCCEEDED\n"));
    QTest::mouseClick(panel->findByText<QPushButton>("Help"), Qt::LeftButton);
    QCOMPARE(bench->takeJournal(), QStringList({"help"}));
    QCOMPARE(recorder->getLines(),
             QStringList({"help", "  one", "  two", "  COMMAND SUCCEEDED", "  "}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandEntry::theHelpLeavesTheFieldAlone()
{
    field->setText("half a command");
    field->setCursorPosition(4);
    QTest::mouseClick(panel->findByText<QPushButton>("Help"), Qt::LeftButton);
    QCOMPARE(field->text(), QString("half a command"));
    QCOMPARE(field->cursorPosition(), 4);
    field->clear();
    QTest::keyClick(field, Qt::Key_Up);
    QTest::keyClick(field, Qt::Key_Up);
    QCOMPARE(field->text(), QString("half a command"));
}

void TestCommandEntry::aFailureOfTheHelpIsReportedAndTheDepthRestored()
{
    connect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this,
            [] { throw std::runtime_error("out of order"); });
    panel->findByText<QPushButton>("Help")->click();
    disconnect(panel->getEngine(), &Board::KSBaseHandler::commandAdded, this, nullptr);
    const QStringList lines = recorder->getLines();
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.first(), QString("help"));
    QVERIFY2(lines.at(1).startsWith("  E: Processing aborted [out of order]"),
             qPrintable(lines.at(1)));
    QVERIFY(lines.at(1).contains("onHelp"));
    QVERIFY(lines.at(1).contains("src/lib/Board/MainWindow"));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestCommandEntry::aSecondPressOfHelpIsQueued()
{
    setScenario(bench->hold("help"));
    auto* const button = panel->findByText<QPushButton>("Help");
    Test::when(
        this, [this] { return bench->count("help") == 1; },
        [this, button] {
            bench->release();
            QVERIFY(button->isEnabled());
            button->click();
        });
    button->click();
    QCOMPARE(bench->takeJournal(), QStringList({"help", "help"}));
    QCOMPARE(recorder->getLines().mid(0, 2), QStringList({"help", "  help"}));
}

KESTOBOARD_TEST_MAIN(TestCommandEntry)

#include "tst_command_entry.moc"
