#include <QtTest>

namespace
{

struct Outcome {
    bool hasEnded = false;
    int status = -1;
    QByteArray output;
    QByteArray report;
};

Outcome runProbe(const QString& kind)
{
    QProcess probe;
    probe.start(KESTOBOARD_RACE_PROBE, {kind});
    Outcome outcome;
    outcome.hasEnded = probe.waitForFinished(-1) && probe.exitStatus() == QProcess::NormalExit;
    outcome.status = probe.exitCode();
    outcome.output = probe.readAllStandardOutput();
    outcome.report = probe.readAllStandardError();
    return outcome;
}

} // namespace

/// The thread sanitizer sees what it is meant to see: a silence of it is worth something only then.
class TestThreadSanitizer : public QObject
{
    Q_OBJECT

private slots:
    void anAnnouncedOrderIsNoRace();
    void aRaceIsReported();
};

void TestThreadSanitizer::anAnnouncedOrderIsNoRace()
{
    const Outcome outcome = runProbe("handed");
    QVERIFY2(outcome.hasEnded && outcome.status == 0, outcome.report);
    QCOMPARE(outcome.output, QByteArray("100 rounds\n"));
    QCOMPARE(outcome.report, QByteArray());
}

void TestThreadSanitizer::aRaceIsReported()
{
    const Outcome outcome = runProbe("unordered");
    QVERIFY(outcome.hasEnded);
    QVERIFY(outcome.status != 0);
    QVERIFY2(outcome.report.contains("data race"), outcome.report);
    QVERIFY2(outcome.report.contains("countTwice"), outcome.report);
}

QTEST_GUILESS_MAIN(TestThreadSanitizer)

#include "tst_thread_sanitizer.moc"
