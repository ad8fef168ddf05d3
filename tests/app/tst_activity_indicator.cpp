#include "app/ActivityIndicator.h"

#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>

#include <QLabel>
#include <QTimer>

#include <functional>

using Kestoboard::ActivityIndicator;
using Test::Bench;
using Test::Panel;

class TestActivityIndicator : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theLaterMarkOfAReplyIsItsVerdict_data();
    void theLaterMarkOfAReplyIsItsVerdict();
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
    QTest::addColumn<ActivityIndicator::Verdict>("verdict");
    QTest::newRow("success") << "OK\nCOMMAND SUCCEEDED\n" << ActivityIndicator::Verdict::Succeeded;
    QTest::newRow("failure") << "no\nCOMMAND FAILED\n" << ActivityIndicator::Verdict::Failed;
    QTest::newRow("failure after success")
        << "COMMAND SUCCEEDED\nCOMMAND FAILED" << ActivityIndicator::Verdict::Failed;
    QTest::newRow("success after failure")
        << "COMMAND FAILED\nCOMMAND SUCCEEDED" << ActivityIndicator::Verdict::Succeeded;
    QTest::newRow("neither") << "killed" << ActivityIndicator::Verdict::Unknown;
    QTest::newRow("nothing") << "" << ActivityIndicator::Verdict::Unknown;
}

void TestActivityIndicator::theLaterMarkOfAReplyIsItsVerdict()
{
    QFETCH(QString, reply);
    QFETCH(ActivityIndicator::Verdict, verdict);
    QCOMPARE(ActivityIndicator::getVerdict(reply.toStdString()), verdict);
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

Q_DECLARE_METATYPE(Kestoboard::ActivityIndicator::Verdict)

KESTOBOARD_TEST_MAIN(TestActivityIndicator)
#include "tst_activity_indicator.moc"
