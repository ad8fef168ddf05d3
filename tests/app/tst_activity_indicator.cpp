#include "app/ActivityIndicator.h"

#include "app/ActivityBrief.h"
#include "app/Initiative.h"
#include "app/LongCommand.h"
#include "app/ReplyVerdict.h"
#include "app/StateIcon.h"
#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/PaintCounter.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>

#include <functional>

using Kestoboard::ActivityIndicator;
using Kestoboard::ReplyVerdict;
using Outcome = Kestoboard::ReplyVerdict::Outcome;
using Test::Bench;
using Test::Panel;

Q_DECLARE_METATYPE(Outcome)

namespace
{

const int longestWait = 60'000;

/// Knows at whose wish an event is delivered, as the panel's own application does.
class Application : public Test::TestApplication
{
public:
    using TestApplication::TestApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const Kestoboard::Initiative::Delivery delivery(receiver, event);
        return TestApplication::notify(receiver, event);
    }
};

} // namespace

class TestActivityIndicator : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theLaterMarkOfAReplyIsItsVerdict_data();
    void theLaterMarkOfAReplyIsItsVerdict();
    void theCountersOfALoadAreItsVerdict_data();
    void theCountersOfALoadAreItsVerdict();
    void aSettingIsJudgedByItsOKAndAFlashByItsMark_data();
    void aSettingIsJudgedByItsOKAndAFlashByItsMark();
    void theConsoleAndTheStatusAgree_data();
    void theConsoleAndTheStatusAgree();
    void aFailureHasItsReasonAndAHint_data();
    void aFailureHasItsReasonAndAHint();
    void aMissingFileIsChosenAnewWhereItWasChosen_data();
    void aMissingFileIsChosenAnewWhereItWasChosen();
    void aLateAnswerIsTold();
    void aTransferIsKnownByItsTypeAndByItsText_data();
    void aTransferIsKnownByItsTypeAndByItsText();
    void aTransferThatWasTypedIsNeverLate();
    void aTransferCanBeGivenALimit();
    void nonsenseAsPatienceIsPassedOver_data();
    void nonsenseAsPatienceIsPassedOver();
    void itIsIdleAtFirst();
    void aRunningCommandIsTold();
    void theVerdictOfTheLastCommandStays_data();
    void theVerdictOfTheLastCommandStays();
    void whatThePanelAsksByItselfIsNotTold();
    void aListingThatAPersonAskedForIsTold();
    void theSameIconIsNotPaintedAgain();
    void aListingThatFailsIsTold();
    void theDirectoryOfAFileIsLeftOut();
    void aQueueIsToldInItsOrder();
    void whatAPersonPressesMeanwhileIsToldToWait();
    void theClockGoesOnAfterAnHour_data();
    void theClockGoesOnAfterAnHour();
    void aDurationIsNeverNothing_data();
    void aDurationIsNeverNothing();
    void whatAPageReadsLeavesTheVerdict();
    void aReadThatWasTypedIsTold();
    void whatATimerDoesLeavesTheVerdict();
    void whatAPersonDoesInTheWaitOfATimerIsTold();
    void aHintStandsOnTheConsoleBelowTheVerdict();
    void aFailedListingIsToldUntilOneSucceeds();
    void aFailedListingGivesWayToThePerson();
    void aLongTransferIsWorthANotice_data();
    void aLongTransferIsWorthANotice();
    void aMessageLeavesTheTimeAndTheVerdict();
    void aMessageOfAReadLeavesNoOldVerdict();

private:
    /// Has a timer of the panel do something, as the poll does.
    void doByTimer(const std::function<void()>& work);

    /// Does something, inside whatever is waiting then, as soon as the indicator says that.
    void whenTold(const QString& beginning, const std::function<void()>& work);

    QScopedPointer<Bench> bench;
    QScopedPointer<Panel> panel;
    QScopedPointer<ActivityIndicator> indicator;
};

void TestActivityIndicator::init()
{
    QSettings().clear();
    bench.reset(new Bench);
    panel.reset(new Panel);
    indicator.reset(new ActivityIndicator(panel->getEngine(), nullptr));
}

void TestActivityIndicator::cleanup()
{
    bench->release();
    indicator.reset();
    panel.reset();
    bench.reset();
}

void TestActivityIndicator::whenTold(const QString& beginning, const std::function<void()>& work)
{
    auto* const timer = new QTimer(indicator.data());
    connect(timer, &QTimer::timeout, this, [this, timer, beginning, work] {
        if (indicator->getText().startsWith(beginning)) {
            timer->stop();
            // A person does it, and not the timer that has looked for the moment.
            const QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            const Kestoboard::Initiative::Delivery delivery(this, &press);
            work();
        }
    });
    timer->start(5);
}

void TestActivityIndicator::doByTimer(const std::function<void()>& work)
{
    QTimer timer;
    bool isDone = false;
    connect(&timer, &QTimer::timeout, this, [&] {
        timer.stop();
        work();
        isDone = true;
    });
    timer.start(1);
    QTRY_VERIFY_WITH_TIMEOUT(isDone, longestWait);
}

void TestActivityIndicator::theLaterMarkOfAReplyIsItsVerdict_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<Outcome>("outcome");
    QTest::newRow("success") << "OK\nCOMMAND SUCCEEDED\n" << Outcome::Succeeded;
    QTest::newRow("failure") << "no\nCOMMAND FAILED\n" << Outcome::Failed;
    QTest::newRow("failure after success")
        << "COMMAND SUCCEEDED\nCOMMAND FAILED" << Outcome::Failed;
    QTest::newRow("success after failure")
        << "COMMAND FAILED\nCOMMAND SUCCEEDED" << Outcome::Succeeded;
    QTest::newRow("neither") << "killed" << Outcome::Unknown;
    QTest::newRow("nothing") << "" << Outcome::Unknown;
}

void TestActivityIndicator::theLaterMarkOfAReplyIsItsVerdict()
{
    QFETCH(QString, reply);
    QFETCH(Outcome, outcome);
    QCOMPARE(ReplyVerdict::fromReply("board list", reply.toStdString()).outcome, outcome);
}

void TestActivityIndicator::theCountersOfALoadAreItsVerdict_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("reason");
    const QString zeros = QStringLiteral(
        "Counters: 0 exception(s), 0 read32 timeout(s), 0 32bit word(s) read in error");
    const QString errors = QStringLiteral(
        "Counters: 1 exception(s), 0 read32 timeout(s), 12 32bit word(s) read in error");
    QTest::newRow("no errors") << zeros + "\nCOMMAND SUCCEEDED\n" << Outcome::Succeeded << "";
    QTest::newRow("no errors, but the mark of failure") << zeros + "\nCOMMAND FAILED\n"
                                                        << Outcome::Succeeded << "";
    QTest::newRow("errors") << errors + "\nCOMMAND SUCCEEDED\n" << Outcome::Failed << errors;
    QTest::newRow("no counters") << "Sent\nCOMMAND SUCCEEDED\n" << Outcome::Failed << "Sent";
    QTest::newRow("refused") << "Error: Is a directory\nCOMMAND FAILED\n"
                             << Outcome::Failed << "Error: Is a directory";
}

void TestActivityIndicator::theCountersOfALoadAreItsVerdict()
{
    QFETCH(QString, reply);
    const ReplyVerdict verdict =
        ReplyVerdict::fromReply("chip bitstream load x.ksb", reply.toStdString());
    QTEST(verdict.outcome, "outcome");
    QTEST(verdict.reason, "reason");
}

void TestActivityIndicator::aSettingIsJudgedByItsOKAndAFlashByItsMark_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<Outcome>("outcome");
    for (const char* const setting :
         {"board set mode 'Jtag only'", "board set reset on", "board set jtag_clock off",
          "board set force_bit on", "board select 0", "chip bitstream err_handler select dump",
          "  board  set   reset off"}) {
        QTest::addRow("%s, success without OK", setting)
            << setting << "Not now\nCOMMAND SUCCEEDED\n"
            << Outcome::Failed;
        QTest::addRow("%s, failure with OK", setting) << setting << "BROKEN\nCOMMAND FAILED\n"
                                                      << Outcome::Succeeded;
    }
    QTest::newRow("flash, OK and failure") << "board spi flash program x.ksb"
                                           << "OK\nCOMMAND FAILED\n"
                                           << Outcome::Failed;
    QTest::newRow("flash, success before failure") << "board spi flash program x.ksb"
                                                   << "COMMAND SUCCEEDED\nCOMMAND FAILED\n"
                                                   << Outcome::Succeeded;
    QTest::newRow("not judged by the engine") << "board get mode"
                                              << "BROKEN\nCOMMAND FAILED\n"
                                              << Outcome::Failed;
}

void TestActivityIndicator::aSettingIsJudgedByItsOKAndAFlashByItsMark()
{
    QFETCH(QString, command);
    QFETCH(QString, reply);
    QTEST(ReplyVerdict::fromReply(command.toStdString(), reply.toStdString()).outcome, "outcome");
}

void TestActivityIndicator::theConsoleAndTheStatusAgree_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("isSuccess");
    QTest::newRow("success without OK") << "Not now\nCOMMAND SUCCEEDED\n" << false;
    QTest::newRow("failure with OK") << "BROKEN\nCOMMAND FAILED\n" << true;
}

void TestActivityIndicator::theConsoleAndTheStatusAgree()
{
    QFETCH(QString, reply);
    QFETCH(bool, isSuccess);
    bench->setScenario(Bench::reply("board set force_bit", reply));
    panel->getEngine()->refreshTamsaMap();
    const Test::ConsoleRecorder recorder;
    panel->getEngine()->setForceBit(true);
    QCOMPARE(recorder.getLines(), QStringList(isSuccess ? "Force bit successfully set to on"
                                                        : "E: Setting of force bit failed"));
    QTRY_VERIFY(indicator->getBrief().contains("fter"));
    QCOMPARE(indicator->getIconName(), std::string(isSuccess ? "success" : "error"));
}

void TestActivityIndicator::aFailureHasItsReasonAndAHint_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("hint");
    QTest::newRow("rights") << "Opening\nError: x.ksb: Permission denied\nCOMMAND FAILED\n"
                            << "Error: x.ksb: Permission denied"
                            << "check the rights";
    QTest::newRow("missing file") << "Error: No such file or directory\nCOMMAND FAILED\n"
                                  << "Error: No such file or directory"
                                  << "where the path leads";
    QTest::newRow("no board") << "ERROR: no board selected\nCOMMAND FAILED\n"
                              << "ERROR: no board selected"
                              << "Connect a board";
    QTest::newRow("unknown reason") << "Error: 0x17\nCOMMAND FAILED\n"
                                    << "Error: 0x17"
                                    << "";
    QTest::newRow("no error line") << "first\n  second \n\nCOMMAND FAILED\n"
                                   << "second"
                                   << "";
    QTest::newRow("mark alone") << "COMMAND FAILED"
                                << ""
                                << "";
    QTest::newRow("success") << "Error: none\nCOMMAND SUCCEEDED\n"
                             << ""
                             << "";
}

void TestActivityIndicator::aFailureHasItsReasonAndAHint()
{
    QFETCH(QString, reply);
    QFETCH(QString, reason);
    QFETCH(QString, hint);
    const ReplyVerdict verdict = ReplyVerdict::fromReply("board list", reply.toStdString());
    QCOMPARE(verdict.reason, reason);
    QVERIFY2(verdict.hint.contains(hint), qPrintable(verdict.hint));
    QCOMPARE(verdict.hint.isEmpty(), hint.isEmpty());
}

void TestActivityIndicator::aMissingFileIsChosenAnewWhereItWasChosen_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("isChosen");
    QTest::newRow("load") << "chip bitstream load /x.ksb" << true;
    QTest::newRow("flash") << " board  spi flash program /x.ksb" << true;
    QTest::newRow("capture") << "ksscope capture /none/x.vcd 1E6" << false;
    QTest::newRow("export") << "chip bitstream err_handler select Text outfilepath=/none/x"
                            << false;
}

void TestActivityIndicator::aMissingFileIsChosenAnewWhereItWasChosen()
{
    QFETCH(QString, command);
    QFETCH(bool, isChosen);
    const ReplyVerdict verdict = ReplyVerdict::fromReply(
        command.toStdString(), "Error: No such file or directory\nCOMMAND FAILED\n");
    QCOMPARE(verdict.hint.contains("Bitstream page"), isChosen);
    QVERIFY(!verdict.hint.isEmpty());
}

void TestActivityIndicator::aLateAnswerIsTold()
{
    ActivityIndicator::setPatience(1);
    bench->setScenario(bench->hold("board set force_bit"));
    panel->getEngine()->refreshTamsaMap();
    whenTold("No answer to \"board set force_bit on\" for ", [this] { bench->release(); });
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
}

void TestActivityIndicator::aTransferIsKnownByItsTypeAndByItsText_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("isWrite");
    QTest::addColumn<bool>("isLong");
    const int control = int(Test::CommandType::Control);
    QTest::newRow("by a button") << int(Test::CommandType::Transfer) << "chip bitstream load x.ksb"
                                 << true << true;
    QTest::newRow("a load") << control << "chip bitstream load x.ksb" << true << true;
    QTest::newRow("a flash") << control << "board spi flash program x.ksb" << true << true;
    QTest::newRow("blanks") << control << "  chip  bitstream load   x.ksb" << true << true;
    QTest::newRow("a capture") << control << "ksscope capture x.vcd" << false << true;
    QTest::newRow("a setting") << control << "board set reset on" << false << false;
    QTest::newRow("a handler of errors")
        << control << "chip bitstream err_handler select dump" << false << false;
}

void TestActivityIndicator::aTransferIsKnownByItsTypeAndByItsText()
{
    QFETCH(int, type);
    QFETCH(QString, command);
    // No one waits for it, and its end takes it out of the queue again.
    auto* const handler = Board::CommandHandler::create(static_cast<Test::CommandType>(type),
                                                        command.toStdString(), panel->getEngine());
    QTEST(Kestoboard::isBoardWrite(handler), "isWrite");
    QTEST(Kestoboard::isTransfer(handler), "isLong");
    handler->destroy();
}

void TestActivityIndicator::aTransferThatWasTypedIsNeverLate()
{
    const Test::DebugMode mode(true);
    ActivityIndicator::setPatience(1);
    bench->setScenario(bench->hold("chip bitstream load"));
    panel->getEngine()->refreshTamsaMap();
    QString told;
    Test::when(
        indicator.data(),
        [this] {
            static const QRegularExpression twoSecondsOrMore("\\((?!0:0[01]\\))");
            const QString text = indicator->getText();
            return text.startsWith("No answer") ||
                   (text.startsWith("Running \"chip") && text.contains(twoSecondsOrMore));
        },
        [&] {
            told = indicator->getText();
            bench->release();
        });
    panel->getEngine()->sendCommand("chip bitstream load x.ksb");
    QVERIFY2(told.startsWith("Running"), qPrintable(told));
}

void TestActivityIndicator::aTransferCanBeGivenALimit()
{
    ActivityIndicator::setPatience(0);
    ActivityIndicator::setTransferPatience(1);
    bench->setScenario(bench->hold("chip bitstream load"));
    panel->getEngine()->refreshTamsaMap();
    whenTold("No answer to \"chip bitstream load x.ksb\" for ", [this] { bench->release(); });
    panel->getEngine()->sendBitstream("x.ksb");
    QTRY_VERIFY(indicator->getText().startsWith("\"chip bitstream load x.ksb\""));
}

void TestActivityIndicator::nonsenseAsPatienceIsPassedOver_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("patience");
    QTest::newRow("nothing") << QVariant() << 10;
    QTest::newRow("a number") << QVariant(30) << 30;
    QTest::newRow("for ever") << QVariant(0) << 0;
    QTest::newRow("below zero") << QVariant(-5) << 10;
    QTest::newRow("words") << QVariant("long") << 10;
}

void TestActivityIndicator::nonsenseAsPatienceIsPassedOver()
{
    QFETCH(QVariant, stored);
    QFETCH(int, patience);
    if (stored.isValid()) {
        QSettings().setValue("Activity/patience", stored);
    }
    QCOMPARE(ActivityIndicator::getPatience(), patience);
}

void TestActivityIndicator::itIsIdleAtFirst()
{
    QCOMPARE(indicator->getText(), QString("Idle"));
}

void TestActivityIndicator::aRunningCommandIsTold()
{
    bench->setScenario(bench->hold("board set force_bit"));
    panel->getEngine()->refreshTamsaMap();
    whenTold("Running \"board set force_bit on\" (", [this] { bench->release(); });
    // Returns when the answer, which is held until then, has come.
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(!indicator->getText().startsWith("Running"));
}

void TestActivityIndicator::theVerdictOfTheLastCommandStays_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("told");
    QTest::newRow("success") << "OK\nCOMMAND SUCCEEDED\n"
                             << "\"board set force_bit on\" succeeded after ";
    QTest::newRow("failure") << "no\nCOMMAND FAILED\n"
                             << "\"board set force_bit on\" failed after ";
}

void TestActivityIndicator::theVerdictOfTheLastCommandStays()
{
    QFETCH(QString, reply);
    QFETCH(QString, told);
    bench->setScenario(Bench::reply("board set force_bit", reply));
    panel->getEngine()->refreshTamsaMap();
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY2(indicator->getText().startsWith(told), qPrintable(indicator->getText()));
    panel->getEngine()->refreshTamsaMap();
    QVERIFY(indicator->getText().startsWith(told));
    QVERIFY(!indicator->findChild<QLabel*>("activityLabel")->accessibleName().isEmpty());
}

void TestActivityIndicator::whatThePanelAsksByItselfIsNotTold()
{
    panel->getEngine()->refreshTamsaMap();
    panel->getEngine()->getMonitor(0);
    QCOMPARE(indicator->getText(), QString("Idle"));
}

void TestActivityIndicator::aListingThatAPersonAskedForIsTold()
{
    QAction refresh;
    refresh.setShortcut(QKeySequence(Qt::Key_F5));
    connect(&refresh, &QAction::triggered, this, [this] { panel->getEngine()->refreshTamsaMap(); });
    panel->getWindow()->addAction(&refresh);
    panel->getWindow()->show();
    QVERIFY(QTest::qWaitForWindowActive(panel->getWindow()));
    QTest::keyClick(panel->getWindow(), Qt::Key_F5);
    QTRY_VERIFY2(indicator->getText().startsWith("\"board list\" succeeded after "),
                 qPrintable(indicator->getText()));
    // The panel's own leave that as it is, also when the last press is long over.
    const QString told = indicator->getText();
    doByTimer([this] { panel->getEngine()->refreshTamsaMap(); });
    QCOMPARE(indicator->getText(), told);
}

void TestActivityIndicator::theSameIconIsNotPaintedAgain()
{
    Test::PaintCounter counter;
    Kestoboard::StateIcon icon(nullptr);
    icon.installEventFilter(&counter);
    icon.showIcon("success");
    icon.show();
    QVERIFY(QTest::qWaitForWindowActive(&icon));
    QTRY_VERIFY(counter.paints > 0);
    const int paints = counter.paints;
    icon.showIcon("success");
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, paints);
    icon.showIcon("error");
    QTRY_VERIFY(counter.paints > paints);
}

void TestActivityIndicator::aListingThatFailsIsTold()
{
    bench->setScenario(Bench::reply("board list", "COMMAND FAILED\n"));
    panel->getEngine()->refreshTamsaMap();
    // The scenario is read with a listing and counts from the next one on.
    panel->getEngine()->refreshTamsaMap();
    QTRY_VERIFY2(indicator->getText().startsWith("\"board list\" failed after "),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::theDirectoryOfAFileIsLeftOut()
{
    const QString path = bench->writeFile("my design.ksb", "bits");
    panel->getEngine()->sendBitstream(path.toStdString());
    QTRY_VERIFY2(indicator->getText().startsWith("\"chip bitstream load my design.ksb\" "),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::aQueueIsToldInItsOrder()
{
    bench->setScenario(bench->hold("board set force_bit on"));
    panel->getEngine()->refreshTamsaMap();
    QString toldWhileQueued;
    whenTold("Running \"board set force_bit on\"", [this, &toldWhileQueued] {
        QTimer::singleShot(0, panel->getEngine(), [this, &toldWhileQueued] {
            toldWhileQueued = indicator->getText();
            bench->release();
        });
        panel->getEngine()->setForceBit(false);
    });
    panel->getEngine()->setForceBit(true);
    QVERIFY(toldWhileQueued.startsWith("Running \"board set force_bit on\""));
    QTRY_VERIFY2(indicator->getText().startsWith("\"board set force_bit off\" "),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::whatAPersonPressesMeanwhileIsToldToWait()
{
    bench->setScenario(bench->hold("board set force_bit on"));
    panel->getEngine()->refreshTamsaMap();
    QString text;
    QString brief;
    whenTold("Running \"board set force_bit on\"", [&] {
        QTimer::singleShot(0, panel->getEngine(), [&] {
            text = indicator->getText();
            brief = indicator->getBrief();
            bench->release();
        });
        panel->getEngine()->setForceBit(false);
    });
    panel->getEngine()->setForceBit(true);
    QVERIFY2(text.endsWith(", waiting behind it: 1"), qPrintable(text));
    QVERIFY2(brief.endsWith(", waiting: 1"), qPrintable(brief));
    QTRY_VERIFY2(indicator->getText().startsWith("\"board set force_bit off\" "),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::theClockGoesOnAfterAnHour_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<QString>("words");
    QTest::newRow("the beginning") << 0 << "0:00";
    QTest::newRow("nearly a second") << 500 << "0:01";
    QTest::newRow("minutes") << 3'599'000 << "59:59";
    QTest::newRow("an hour") << 3'665'000 << "1:01:05";
    QTest::newRow("a day") << 90'000'000 << "25:00:00";
}

void TestActivityIndicator::theClockGoesOnAfterAnHour()
{
    QFETCH(int, milliseconds);
    QFETCH(QString, words);
    QCOMPARE(ActivityIndicator::getClock(milliseconds), words);
}

void TestActivityIndicator::aDurationIsNeverNothing_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<QString>("words");
    QTest::newRow("nothing") << 0 << "less than 0.1 s";
    QTest::newRow("a blink") << 99 << "less than 0.1 s";
    QTest::newRow("a tenth") << 100 << "0.1 s";
    QTest::newRow("seconds") << 12'340 << "12.3 s";
    QTest::newRow("minutes") << 83'000 << "0:01:23";
    QTest::newRow("hours") << 3'723'000 << "1:02:03";
    QTest::newRow("days") << 90'061'000 << "25:01:01";
}

void TestActivityIndicator::aDurationIsNeverNothing()
{
    QFETCH(int, milliseconds);
    QFETCH(QString, words);
    QCOMPARE(ActivityIndicator::getDuration(milliseconds), words);
}

void TestActivityIndicator::whatAPageReadsLeavesTheVerdict()
{
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
    const QString told = indicator->getText();
    panel->getEngine()->getMode();
    panel->getEngine()->getForceBit();
    QCOMPARE(indicator->getText(), told);
}

void TestActivityIndicator::aReadThatWasTypedIsTold()
{
    const Test::DebugMode mode(true);
    // As the command row and the command files do it.
    Orvex::console->print("board get mode", "");
    panel->getEngine()->sendCommand("board get mode");
    QTRY_VERIFY2(indicator->getText().startsWith("\"board get mode\" "),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::whatATimerDoesLeavesTheVerdict()
{
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
    const QString told = indicator->getText();
    bench->setScenario(Bench::board("KS-Dev A"));
    doByTimer([this] { panel->getEngine()->refreshTamsaMap(); });
    // The new board has been brought up.
    QCOMPARE(bench->count("board set reset off"), 1);
    QCOMPARE(indicator->getText(), told);
}

void TestActivityIndicator::whatAPersonDoesInTheWaitOfATimerIsTold()
{
    bench->setScenario(bench->hold("board list"));
    QPushButton button;
    bool isPressed = false;
    connect(&button, &QPushButton::clicked, this, [&] {
        isPressed = true;
        panel->getEngine()->setForceBit(true);
    });
    doByTimer([&] {
        Test::when(
            &button, [this] { return bench->count("board list") > 1; },
            [&] {
                bench->release();
                QTest::mouseClick(&button, Qt::LeftButton);
            });
        // The press comes in the wait of one of these.
        while (!isPressed) {
            panel->getEngine()->refreshTamsaMap();
        }
    });
    QTRY_VERIFY2(indicator->getText().startsWith("\"board set force_bit on\""),
                 qPrintable(indicator->getText()));
}

void TestActivityIndicator::aHintStandsOnTheConsoleBelowTheVerdict()
{
    bench->setScenario(
        Bench::reply("board set force_bit", "Error: Permission denied\nCOMMAND FAILED\n"));
    panel->getEngine()->refreshTamsaMap();
    const Test::ConsoleRecorder recorder;
    panel->getEngine()->setForceBit(true);
    QTRY_COMPARE(recorder.getLines().size(), 2);
    QCOMPARE(recorder.getLines().first(), QString("E: Setting of force bit failed"));
    QVERIFY2(recorder.getLines().last().startsWith("W: Error: Permission denied – ") &&
                 recorder.getLines().last().contains("check the rights"),
             qPrintable(recorder.getLines().last()));
    // Reason and hint are two sentences in the status bar too.
    QVERIFY2(indicator->getText().contains(" – Error: Permission denied – "),
             qPrintable(indicator->getText()));
}

void TestActivityIndicator::aFailedListingIsToldUntilOneSucceeds()
{
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
    const QString told = indicator->getText();
    bench->setScenario(Bench::reply("board list", "Error: Permission denied\nCOMMAND FAILED\n"));
    panel->getEngine()->refreshTamsaMap();
    panel->getEngine()->refreshTamsaMap();
    QTRY_VERIFY2(indicator->getText().contains("check the rights"),
                 qPrintable(indicator->getText()));
    bench->setScenario({});
    panel->getEngine()->refreshTamsaMap();
    panel->getEngine()->refreshTamsaMap();
    QTRY_COMPARE(indicator->getText(), told);
}

void TestActivityIndicator::aFailedListingGivesWayToThePerson()
{
    bench->setScenario(Bench::reply("board list", "COMMAND FAILED\n"));
    panel->getEngine()->refreshTamsaMap();
    panel->getEngine()->refreshTamsaMap();
    QTRY_VERIFY(indicator->getText().startsWith("\"board list\" failed"));
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
    const QString told = indicator->getText();
    panel->getEngine()->refreshTamsaMap();
    QCOMPARE(indicator->getText(), told);
}

void TestActivityIndicator::aLongTransferIsWorthANotice_data()
{
    QTest::addColumn<bool>("isTransfer");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<bool>("isWorth");
    QTest::newRow("transfer, ten seconds") << true << 10'000 << true;
    QTest::newRow("transfer, less") << true << 9'999 << false;
    QTest::newRow("anything else") << false << 60'000 << false;
}

void TestActivityIndicator::aLongTransferIsWorthANotice()
{
    QFETCH(bool, isTransfer);
    QFETCH(int, milliseconds);
    QTEST(ActivityIndicator::isWorthNotice(isTransfer, milliseconds), "isWorth");
}

void TestActivityIndicator::aMessageLeavesTheTimeAndTheVerdict()
{
    bench->setScenario(bench->hold("board set force_bit"));
    panel->getEngine()->refreshTamsaMap();
    QStatusBar* const bar = panel->getWindow()->statusBar();
    auto* const own = new ActivityIndicator(panel->getEngine(), bar);
    bar->addWidget(own, 1);
    auto* const brief = new Kestoboard::ActivityBrief(own, bar);
    bar->insertPermanentWidget(1, brief);
    panel->getWindow()->show();
    QVERIFY(own->isVisible());
    QVERIFY(!brief->isVisible());
    // The engine's message comes with the first second.
    QString time;
    Test::when(
        own, [bar] { return !bar->currentMessage().isEmpty(); },
        [&] {
            bench->release();
            time = own->getBrief();
            QVERIFY(!own->isVisible());
            QVERIFY(brief->isVisible());
        });
    panel->getEngine()->setForceBit(true);
    QVERIFY2(QRegularExpression("^0:[0-9][0-9]$").match(time).hasMatch(), qPrintable(time));
    // It stands for a moment after the end: the verdict is there at once, and once only.
    QTRY_VERIFY2(own->getBrief().contains("after"), qPrintable(own->getBrief()));
    QVERIFY(!own->getBrief().contains("force_bit"));
    bar->clearMessage();
    QVERIFY(own->isVisible());
    QVERIFY(!brief->isVisible());
}

void TestActivityIndicator::aMessageOfAReadLeavesNoOldVerdict()
{
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getBrief().contains("after"));
    panel->getEngine()->getMode();
    QTRY_COMPARE(indicator->getBrief(), QString());
}

int main(int argc, char** argv)
{
    Application application(argc, argv);
    TestActivityIndicator test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_activity_indicator.moc"
