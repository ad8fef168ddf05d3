#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/ScopeLeaf.h>
#include <foundation/Fatal.h>
#include <foundation/InvalidRequest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>

#include <memory>

using Board::ScopeLeaf;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::doInNextWait;
using Test::doOnceReceived;
using Test::FragilePanel;
using Test::getNamed;
using Test::Panel;
using Test::takeCommands;

namespace
{

QString boardA(const QString& moreKeys = {})
{
    return Bench::board("KS-Dev A", "selected = true\n" + moreKeys);
}

QCheckBox* getImmediate(const QObject& root)
{
    return getNamed<QCheckBox>(root, "immediateCheckBox");
}

QSpinBox* getFrequency(const QObject& root)
{
    return getNamed<QSpinBox>(root, "frequencySpinBox");
}

QComboBox* getUnit(const QObject& root)
{
    return getNamed<QComboBox>(root, "frequencyUnitComboBox");
}

QLineEdit* getFilename(const QObject& root)
{
    return getNamed<QLineEdit>(root, "filenameLineEdit");
}

void setFilename(const Panel& panel, const QString& name)
{
    getFilename(*panel.getWindow())->setText(name);
}

// The mouse button goes down and is not let go.
void press(const Panel& panel)
{
    QTest::mousePress(getNamed<QPushButton>(*panel.getWindow(), "captureButton"), Qt::LeftButton);
}

QStringList describeValues(const ScopeLeaf& leaf)
{
    return {getImmediate(leaf)->isChecked() ? "immediate" : "triggered",
            QString::number(getFrequency(leaf)->value()), getUnit(leaf)->currentText(),
            getFilename(leaf)->text()};
}

} // namespace

class TestScopeLeaf : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings().clear(); }

    void theFormStandsInItsGrid();
    void theCaptureIsItsOnlySlot();
    void aFirstRunShowsItsDefaults();
    void theFrequencyCannotLeaveItsRange();
    void storedValuesComeBack();
    void storedValuesArePulledIntoTheForm_data();
    void storedValuesArePulledIntoTheForm();
    void theFormIsSavedWhenThePageIsDestroyed();
    void aCaptureSavesNothing();
    void choosingABoardLeavesTheFormAlone();

    void theButtonActsWhenItIsPressed();
    void theCommandHasTheFormsValues_data();
    void theCommandHasTheFormsValues();
    void theReplyIsPrintedWithoutItsEmptyLines();
    void aWrittenCaptureIsThere();
    void withoutAFileNameThePersonIsTold();
    void withoutABoardThePersonIsTold();
    void anotherUnitIsFatalBeforeAnythingElse();
    void outsideDebugModeNothingIsSent();
    void aConnectedBoardIsEnough();

    void aRefusedCaptureIsPrinted();
    void anEmptyReplyIsItsMark();
    void aReplyOfManyLinesIsPrinted();
    void aThrowingCaptureLeavesTheConsoleDeeper();
    void aSecondPressInTheWaitOfTheFirstIsQueuedBehindIt();
    void aBoardThatVanishesInTheWaitOfACaptureIsNoHarm();
    void hidingThePageInTheWaitOfACaptureLetsItFinish();
    void withoutAFolioNoBoardIsConnected();
    void theWindowMayBeDeletedInTheWaitOfACapture();
};

void TestScopeLeaf::theFormStandsInItsGrid()
{
    const ScopeLeaf leaf(nullptr);
    QCOMPARE(Test::describeGrid(leaf), QStringList({
                                           "0,0 1x1 QLabel 'Immediate'",
                                           "0,1 1x1 QCheckBox immediateCheckBox",
                                           "1,0 1x1 QLabel 'Capture frequency'",
                                           "1,1 1x1 QSpinBox frequencySpinBox",
                                           "1,2 1x1 left QComboBox frequencyUnitComboBox",
                                           "2,0 1x1 QLabel 'File name'",
                                           "2,1 1x1 QLineEdit filenameLineEdit",
                                           "4,1 1x2 right QPushButton 'Capture'",
                                       }));
    QCOMPARE(Test::describeMetrics(leaf),
             QStringList({"spacing: 8", "column stretch 2: 1", "row stretch 3: 1"}));
    QCOMPARE(getImmediate(leaf)->text(), QString());
    QCOMPARE(getUnit(leaf)->count(), 1);
    QVERIFY(!Test::isEnriched(*getUnit(leaf)));
}

void TestScopeLeaf::theCaptureIsItsOnlySlot()
{
    QCOMPARE(Test::describeMethods(ScopeLeaf::staticMetaObject),
             QStringList("private slot onCapture()"));
}

void TestScopeLeaf::aFirstRunShowsItsDefaults()
{
    Bench bench;
    Panel panel;
    QCOMPARE(describeValues(*panel.find<ScopeLeaf>()), QStringList({"triggered", "1", "MHz", ""}));
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines(), QStringList("E: Please specify a filename"));
}

void TestScopeLeaf::theFrequencyCannotLeaveItsRange()
{
    const ScopeLeaf leaf(nullptr);
    getFrequency(leaf)->setValue(1000);
    QCOMPARE(getFrequency(leaf)->value(), 999);
    getFrequency(leaf)->setValue(0);
    QCOMPARE(getFrequency(leaf)->value(), 1);
}

void TestScopeLeaf::storedValuesComeBack()
{
    const QString name = QString::fromUtf8("trace \xC3\xA9t\xC3\xA9.vcd");
    {
        const ScopeLeaf leaf(nullptr);
        getImmediate(leaf)->setChecked(true);
        getFrequency(leaf)->setValue(250);
        getFilename(leaf)->setText(name);
    }
    const ScopeLeaf leaf(nullptr);
    QCOMPARE(describeValues(leaf), QStringList({"immediate", "250", "MHz", name}));
}

void TestScopeLeaf::storedValuesArePulledIntoTheForm_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<QStringList>("values");
    const auto add = [](const char* name, const QVariantMap& stored, const QStringList& values) {
        QTest::newRow(name) << stored << values;
    };
    add("too high", {{"frequency", 5000}}, {"triggered", "999", "MHz", ""});
    add("too low", {{"frequency", -3}}, {"triggered", "1", "MHz", ""});
    add("no number", {{"frequency", "fast"}}, {"triggered", "1", "MHz", ""});
    add("another unit", {{"frequencyUnit", "GHz"}}, {"triggered", "1", "MHz", ""});
    add("a unit of another case", {{"frequencyUnit", "mhz"}}, {"triggered", "1", "MHz", ""});
    add("immediate", {{"immediate", true}}, {"immediate", "1", "MHz", ""});
    add("not immediate", {{"immediate", false}}, {"triggered", "1", "MHz", ""});
    add("no truth", {{"immediate", QVariantMap{{"a", 1}}}}, {"triggered", "1", "MHz", ""});
    add("a number for the name", {{"filename", 12}}, {"triggered", "1", "MHz", "12"});
}

void TestScopeLeaf::storedValuesArePulledIntoTheForm()
{
    QFETCH(QVariantMap, stored);
    QFETCH(QStringList, values);
    QSettings settings;
    settings.beginGroup("ScopeLeaf");
    for (auto entry = stored.constBegin(); entry != stored.constEnd(); ++entry) {
        settings.setValue(entry.key(), entry.value());
    }
    settings.endGroup();
    const ScopeLeaf leaf(nullptr);
    QCOMPARE(describeValues(leaf), values);
}

void TestScopeLeaf::theFormIsSavedWhenThePageIsDestroyed()
{
    Bench bench;
    auto panel = std::make_unique<Panel>();
    const auto& leaf = *panel->find<ScopeLeaf>();
    getImmediate(leaf)->setChecked(true);
    getFrequency(leaf)->setValue(42);
    getFilename(leaf)->setText("trace.vcd");
    QCOMPARE(QSettings().allKeys(), QStringList());
    panel.reset();
    QSettings settings;
    QCOMPARE(settings.allKeys(), QStringList({"ScopeLeaf/filename", "ScopeLeaf/frequency",
                                              "ScopeLeaf/frequencyUnit", "ScopeLeaf/immediate"}));
    QCOMPARE(settings.value("ScopeLeaf/immediate"), QVariant(true));
    QCOMPARE(settings.value("ScopeLeaf/frequency"), QVariant(42));
    QCOMPARE(settings.value("ScopeLeaf/frequencyUnit"), QVariant("MHz"));
    QCOMPARE(settings.value("ScopeLeaf/filename"), QVariant("trace.vcd"));
}

void TestScopeLeaf::aCaptureSavesNothing()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setFilename(panel, "trace.vcd");
    press(panel);
    QCOMPARE(QSettings().allKeys(), QStringList());
    panel.find<ScopeLeaf>()->saveSettings();
    QCOMPARE(QSettings().value("ScopeLeaf/filename"), QVariant("trace.vcd"));
}

void TestScopeLeaf::choosingABoardLeavesTheFormAlone()
{
    Bench bench;
    bench.setScenario(boardA() + Bench::board("KS-Dev B"));
    Panel panel;
    setFilename(panel, "trace.vcd");
    getFrequency(*panel.getWindow())->setValue(7);
    getNamed<QComboBox>(*panel.getFolio(), "cardComboBox")->setCurrentIndex(1);
    panel.find<ScopeLeaf>()->initialize();
    QCOMPARE(describeValues(*panel.find<ScopeLeaf>()),
             QStringList({"triggered", "7", "MHz", "trace.vcd"}));
}

void TestScopeLeaf::theButtonActsWhenItIsPressed()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setFilename(panel, "trace.vcd");
    takeCommands(&bench);
    press(panel);
    QCOMPARE(takeCommands(&bench), QStringList("ksscope capture trace.vcd 1E6"));
    QTest::mouseRelease(getNamed<QPushButton>(*panel.getWindow(), "captureButton"), Qt::LeftButton);
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestScopeLeaf::theCommandHasTheFormsValues_data()
{
    QTest::addColumn<int>("frequency");
    QTest::addColumn<bool>("isImmediate");
    QTest::addColumn<QString>("filename");
    QTest::addColumn<QString>("command");
    QTest::newRow("the lowest, with a trigger") << 1 << false << "out"
                                                << "ksscope capture out 1E6";
    QTest::newRow("the highest, immediate") << 999 << true << "out"
                                            << "ksscope capture out 999E6 immediate=1";
    QTest::newRow("in between") << 100 << false << "dir/out.vcd"
                                << "ksscope capture dir/out.vcd 100E6";
    QTest::newRow("blanks are not quoted") << 2 << false << " my trace "
                                           << "ksscope capture  my trace  2E6";
    QTest::newRow("accents") << 2 << true << QString::fromUtf8("\xC3\xA9t\xC3\xA9.vcd")
                             << QString::fromUtf8("ksscope capture \xC3\xA9t\xC3\xA9.vcd 2E6 "
                                                  "immediate=1");
}

void TestScopeLeaf::theCommandHasTheFormsValues()
{
    QFETCH(int, frequency);
    QFETCH(bool, isImmediate);
    QFETCH(QString, filename);
    QFETCH(QString, command);
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    getFrequency(*panel.getWindow())->setValue(frequency);
    getImmediate(*panel.getWindow())->setChecked(isImmediate);
    setFilename(panel, filename);
    takeCommands(&bench);
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(takeCommands(&bench), QStringList(command));
    QCOMPARE(console.getLines().first(), "Capturing in " + filename);
}

void TestScopeLeaf::theReplyIsPrintedWithoutItsEmptyLines()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() +
                      Bench::reply("ksscope", "\n\nArmed\n\n  Done \n\nCOMMAND SUCCEEDED\n"));
    Panel panel;
    setFilename(panel, "trace.vcd");
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines(), QStringList({"Capturing in trace.vcd", "  Armed", "    Done ",
                                              "  COMMAND SUCCEEDED"}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestScopeLeaf::aWrittenCaptureIsThere()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setFilename(panel, bench.getPath("trace.vcd"));
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines().last(), QString("  COMMAND SUCCEEDED"));
    QVERIFY(bench.readFile("trace.vcd").contains("$timescale"));
}

void TestScopeLeaf::withoutAFileNameThePersonIsTold()
{
    for (const bool isDebug : {false, true}) {
        const Test::DebugMode debug(isDebug);
        Bench bench;
        bench.setScenario(boardA());
        Panel panel;
        takeCommands(&bench);
        ConsoleRecorder console;
        press(panel);
        QCOMPARE(console.getLines(), QStringList("E: Please specify a filename"));
        QCOMPARE(takeCommands(&bench), QStringList());
    }
}

void TestScopeLeaf::withoutABoardThePersonIsTold()
{
    const Test::DebugMode debug(true);
    Bench bench;
    Panel panel;
    setFilename(panel, "trace.vcd");
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines(), QStringList("E: No board connected"));
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestScopeLeaf::anotherUnitIsFatalBeforeAnythingElse()
{
    Bench bench;
    Panel panel;
    getUnit(*panel.getWindow())->addItem("kHz");
    getUnit(*panel.getWindow())->setCurrentIndex(1);
    ConsoleRecorder console;
    try {
        QMetaObject::invokeMethod(panel.find<ScopeLeaf>(), "onCapture");
        QFAIL("no exception");
    } catch (const Orvex::Fatal& failure) {
        QCOMPARE(failure.getMessage().find("Should not be here"), std::size_t(0));
        QCOMPARE(failure.getFunction(), std::string("onCapture"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/ScopeLeaf"));
    }
    QCOMPARE(console.getLines(), QStringList());
    // By the button it leaves the slot towards the application.
    press(panel);
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions().size(), 1);
}

void TestScopeLeaf::outsideDebugModeNothingIsSent()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setFilename(panel, "trace.vcd");
    takeCommands(&bench);
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines(), QStringList("Capturing in trace.vcd"));
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestScopeLeaf::aConnectedBoardIsEnough()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(Bench::board("KS-Dev A") +
                      Bench::reply("board select -1", "OK\nCOMMAND SUCCEEDED\n"));
    Panel panel;
    QVERIFY(panel.getEngine()->getSelectedTamsa() == nullptr);
    setFilename(panel, "trace.vcd");
    takeCommands(&bench);
    press(panel);
    QCOMPARE(takeCommands(&bench), QStringList("ksscope capture trace.vcd 1E6"));
}

void TestScopeLeaf::aRefusedCaptureIsPrinted()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA("capture = \"refused\""));
    Panel panel;
    setFilename(panel, "trace.vcd");
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(
        console.getLines(),
        QStringList({"Capturing in trace.vcd",
                     "  Error: Capture refused, the trace memory is in use", "  COMMAND FAILED"}));
}

void TestScopeLeaf::anEmptyReplyIsItsMark()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + Bench::reply("ksscope", "COMMAND SUCCEEDED\n"));
    Panel panel;
    setFilename(panel, "trace.vcd");
    ConsoleRecorder console;
    press(panel);
    QCOMPARE(console.getLines(), QStringList({"Capturing in trace.vcd", "  COMMAND SUCCEEDED"}));
}

void TestScopeLeaf::aReplyOfManyLinesIsPrinted()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + Bench::fault("ksscope", "kind = \"large\"\nbytes = 10000000"));
    Panel panel;
    setFilename(panel, bench.getPath("trace.vcd"));
    ConsoleRecorder console;
    press(panel);
    QVERIFY(console.getMessages().size() > 100000);
    QCOMPARE(console.getMessages().last().text, std::string("COMMAND SUCCEEDED"));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestScopeLeaf::aThrowingCaptureLeavesTheConsoleDeeper()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setFilename(panel, "trace.vcd");
    const QMetaObject::Connection saboteur = connect(
        Orvex::console, &Orvex::Console::messageAdded, this, [](const Orvex::Message& message) {
            if (message.text == "COMMAND SUCCEEDED") {
                throw Orvex::InvalidRequest("Sabotage");
            }
        });
    QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(panel.find<ScopeLeaf>(), "onCapture"),
                             Orvex::InvalidRequest);
    disconnect(saboteur);
    QCOMPARE(Orvex::console->getDepth(), 1);
    Orvex::console->unindent();
}

void TestScopeLeaf::aSecondPressInTheWaitOfTheFirstIsQueuedBehindIt()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + bench.hold("ksscope") +
                      Bench::reply("ksscope", "Done\nCOMMAND SUCCEEDED\n"));
    Panel panel;
    setFilename(panel, "one");
    takeCommands(&bench);
    ConsoleRecorder console;
    doOnceReceived(&bench, "ksscope capture one 1E6", [&] {
        doInNextWait([&] { bench.release(); });
        setFilename(panel, "two");
        QVERIFY(getNamed<QPushButton>(*panel.getWindow(), "captureButton")->isEnabled());
        press(panel);
    });
    press(panel);
    QCOMPARE(takeCommands(&bench),
             QStringList({"ksscope capture one 1E6", "ksscope capture two 1E6"}));
    QCOMPARE(console.getLines(),
             QStringList({"Capturing in one", "  Capturing in two", "    Done",
                          "    COMMAND SUCCEEDED", "  Done", "  COMMAND SUCCEEDED"}));
}

void TestScopeLeaf::aBoardThatVanishesInTheWaitOfACaptureIsNoHarm()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + bench.hold("ksscope"));
    Panel panel;
    setFilename(panel, bench.getPath("trace.vcd"));
    const QString command = "ksscope capture " + bench.getPath("trace.vcd") + " 1E6";
    ConsoleRecorder console;
    doOnceReceived(&bench, command, [&] {
        bench.setScenario({});
        doInNextWait([&] { bench.release(); });
        panel.getEngine()->refreshTamsaMap();
    });
    press(panel);
    QVERIFY(panel.getEngine()->getTamsas().isEmpty());
    QVERIFY(console.contains("  Disconnected KS-Dev A"));
    QCOMPARE(console.getLines().last(), QString("  COMMAND SUCCEEDED"));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestScopeLeaf::hidingThePageInTheWaitOfACaptureLetsItFinish()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + bench.hold("ksscope"));
    Panel panel;
    panel.getWindow()->show();
    panel.getFolio()->raiseLeaf(3);
    setFilename(panel, bench.getPath("trace.vcd"));
    ConsoleRecorder console;
    doOnceReceived(&bench, "ksscope capture " + bench.getPath("trace.vcd") + " 1E6", [&] {
        panel.getFolio()->raiseLeaf(0);
        panel.getFolio()->raiseLeaf(3);
        bench.release();
    });
    press(panel);
    QCOMPARE(console.getLines().last(), QString("  COMMAND SUCCEEDED"));
}

void TestScopeLeaf::withoutAFolioNoBoardIsConnected()
{
    const ScopeLeaf leaf(nullptr);
    QVERIFY(leaf.getFolio() == nullptr);
    QVERIFY(leaf.getKSBaseHandler() == nullptr);
    getFilename(leaf)->setText("trace.vcd");
    ConsoleRecorder console;
    getNamed<QPushButton>(leaf, "captureButton")->click();
    QCOMPARE(console.getLines(), QStringList("E: No board connected"));
}

void TestScopeLeaf::theWindowMayBeDeletedInTheWaitOfACapture()
{
    const Test::DebugMode debug(true);
    Bench bench;
    bench.setScenario(boardA() + bench.hold("ksscope"));
    FragilePanel panel;
    getFilename(*panel.getWindow())->setText("trace.vcd");
    auto* leaf = panel.getWindow()->findChild<ScopeLeaf*>();
    panel.deleteWindowOnceReceived(&bench, "ksscope capture trace.vcd 1E6");
    QVERIFY(QMetaObject::invokeMethod(leaf, "onCapture"));
    QVERIFY(panel.getWindow() == nullptr);
    QCOMPARE(Orvex::console->getDepth(), 0);
}

KESTOBOARD_TEST_MAIN(TestScopeLeaf)

#include "tst_scope_leaf.moc"
