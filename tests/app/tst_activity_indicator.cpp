#include "app/ActivityIndicator.h"

#include "app/ReplyVerdict.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>

#include <QLabel>
#include <QSettings>
#include <QTimer>

#include <functional>

using Kestoboard::ActivityIndicator;
using Kestoboard::ReplyVerdict;
using Outcome = Kestoboard::ReplyVerdict::Outcome;
using Test::Bench;
using Test::Panel;

Q_DECLARE_METATYPE(Outcome)

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
    void aFailureHasItsReasonAndAHint_data();
    void aFailureHasItsReasonAndAHint();
    void aLateAnswerIsTold();
    void nonsenseAsPatienceIsPassedOver_data();
    void nonsenseAsPatienceIsPassedOver();
    void itIsIdleAtFirst();
    void aRunningCommandIsTold();
    void theVerdictOfTheLastCommandStays_data();
    void theVerdictOfTheLastCommandStays();
    void whatThePanelAsksByItselfIsNotTold();
    void aListingThatFailsIsTold();
    void theDirectoryOfAFileIsLeftOut();
    void aQueueIsToldInItsOrder();

private:
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
            work();
        }
    });
    timer->start(5);
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
                                  << "choose it anew";
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

void TestActivityIndicator::aLateAnswerIsTold()
{
    ActivityIndicator::setPatience(1);
    bench->setScenario(bench->hold("board set force_bit"));
    panel->getEngine()->refreshTamsaMap();
    whenTold("No answer to \"board set force_bit on\" for ", [this] { bench->release(); });
    panel->getEngine()->setForceBit(true);
    QTRY_VERIFY(indicator->getText().startsWith("\"board set force_bit on\""));
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

KESTOBOARD_TEST_MAIN(TestActivityIndicator)
#include "tst_activity_indicator.moc"
