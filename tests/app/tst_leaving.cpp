// The panel with somebody at its controls: leaving by its window, failing slots, a file to begin
// with.

#include "Program.h"
#include "support/Bench.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QMap>

using Test::Bench;
using Test::Program;

class TestLeaving : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void leavingAnIdlePanelAsksNothing();
    void leavingDuringATransferAsks_data();
    void leavingDuringATransferAsks();
    void stayingLetsTheTransferComeToItsEnd();
    void leavingDuringAnotherCommandAsksNothing();
    void leavingWhileTheToolIsSilentAtTheStart();
    void theDesktopsRequestToEndIsFollowed();
    void theEndOfTheSessionSavesTheSettingsAtOnce();
    void theEndOfTheSessionEndsThePanelWhenItIsTold();
    void theEndOfTheSessionAsksDuringATransfer();
    void stayingKeepsTheSession();
    void leavingWhenTheTransferIsOverLetsTheSessionEnd();
    void aSessionThatMayNotAskEndsDuringATransfer();
    void aBitstreamOnTheCommandLineIsChosenAndNotLoaded();
    void aFileThatCannotBeChosenIsToldOnTheConsole();
    void settingsThatCannotBeUnderstoodArePutAside_data();
    void settingsThatCannotBeUnderstoodArePutAside();
    void settingsThatCannotBeUsedAreNamed();
    void anExceptionThatLeavesASlotIsReported_data();
    void anExceptionThatLeavesASlotIsReported();

private:
    void play(const QString& part, const QStringList& arguments = {});

    QScopedPointer<Bench> bench;
    QScopedPointer<Program> program;
};

void TestLeaving::init()
{
    bench.reset(new Bench);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true"));
    bench->writeFile("design.ksb", QByteArray(4096, 'k'));
    bench->writeFile("queued.ksb", QByteArray(4096, 'q'));
    program.reset(new Program);
    program->setPath(Program::getActorPath());
}

void TestLeaving::cleanup()
{
    program.reset();
    bench.reset();
}

/// Has the part played to the end, which is to be an orderly one with the settings saved.
void TestLeaving::play(const QString& part, const QStringList& arguments)
{
    QVERIFY(program->run(QStringList(part) + arguments));
    QVERIFY2(program->getStatus() == 0, qPrintable(program->getErrors()));
    QVERIFY2(!program->getOutput().contains("failed"), qPrintable(program->getOutput()));
    QVERIFY2(!program->getErrors().contains("Kestoboard has ended"),
             qPrintable(program->getErrors()));
}

void TestLeaving::leavingAnIdlePanelAsksNothing()
{
    play("leave-when-idle");
    QVERIFY(!program->getOutput().contains("asked"));
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::leavingDuringATransferAsks_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("held");
    QTest::newRow("running") << "leave-during-transfer"
                             << "chip bitstream load";
    QTest::newRow("queued") << "leave-with-queued-transfer"
                            << "board set force_bit";
    QTest::newRow("typed") << "leave-during-typed-transfer"
                           << "board spi flash program";
}

void TestLeaving::leavingDuringATransferAsks()
{
    QFETCH(QString, part);
    QFETCH(QString, held);
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") + bench->hold(held));
    play(part, {"--debug"});
    QCOMPARE(program->getOutput().count("asked\n"), 1);
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::stayingLetsTheTransferComeToItsEnd()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    program->setVariable("KESTOBOARD_TEST_RELEASE", bench->getPath("../released"));
    play("stay");
    QCOMPARE(program->getOutput().count("asked\n"), 1);
    QVERIFY(program->getOutput().contains("Bitstream successfully sent"));
}

void TestLeaving::leavingDuringAnotherCommandAsksNothing()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("board set force_bit"));
    play("leave-during-command");
    QVERIFY(!program->getOutput().contains("asked"));
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
}

void TestLeaving::leavingWhileTheToolIsSilentAtTheStart()
{
    bench->setScenario(bench->hold("board list"));
    program->setSetting("ScopeLeaf/filename", "kept.vcd");
    program->setSetting("Window/geometry", QByteArray("of the run before"));
    play("leave-at-start");
    QVERIFY(program->getOutput().contains("waiting\n"));
    QCOMPARE(program->getSetting("ScopeLeaf/filename").toString(), QString("kept.vcd"));
    QCOMPARE(program->getSetting("Window/geometry").toByteArray(), QByteArray("of the run before"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::theDesktopsRequestToEndIsFollowed()
{
    play("quit-event");
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
}

void TestLeaving::theEndOfTheSessionSavesTheSettingsAtOnce()
{
    play("session-end-and-power-off");
    QVERIFY(program->getOutput().contains("answered\n"));
    // Nothing but the answer has saved them: the panel had no time to end.
    QVERIFY(QFile::exists(".kestoboard.lock"));
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!program->getSetting("Window/geometry").toByteArray().isEmpty());
}

void TestLeaving::theEndOfTheSessionEndsThePanelWhenItIsTold()
{
    play("session-end");
    QVERIFY(program->getOutput().contains("answered\n"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::theEndOfTheSessionAsksDuringATransfer()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    play("session-end-leave");
    QCOMPARE(program->getOutput().count("asked\n"), 1);
    QVERIFY(!program->getOutput().contains("cancelled"));
    // The session need not wait for an answer: the panel has gone.
    QVERIFY(!program->getOutput().contains("answered"));
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::stayingKeepsTheSession()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    program->setVariable("KESTOBOARD_TEST_RELEASE", bench->getPath("../released"));
    play("session-end-stay");
    const QString output = program->getOutput();
    QVERIFY2(output.contains("asked\ncancelled\nanswered\n"), qPrintable(output));
    QVERIFY2(output.contains("Bitstream successfully sent"), qPrintable(output));
}

void TestLeaving::leavingWhenTheTransferIsOverLetsTheSessionEnd()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    program->setVariable("KESTOBOARD_TEST_RELEASE", bench->getPath("../released"));
    play("session-end-leave-when-over");
    const QString output = program->getOutput();
    // The session need not wait for an answer: the panel has gone.
    QVERIFY2(!output.contains("cancelled") && !output.contains("answered"), qPrintable(output));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::aSessionThatMayNotAskEndsDuringATransfer()
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       bench->hold("chip bitstream load"));
    play("session-end-unasked");
    QVERIFY(program->getOutput().contains("answered\n"));
    QVERIFY(!program->getOutput().contains("asked"));
    QCOMPARE(program->getSetting("ScopeLeaf/frequencyUnit").toString(), QString("MHz"));
    QVERIFY(!QFile::exists(".kestoboard.lock"));
}

void TestLeaving::aBitstreamOnTheCommandLineIsChosenAndNotLoaded()
{
    play("tell-choice", {"design.ksb"});
    QVERIFY(program->getOutput().contains("chosen " + bench->getPath("design.ksb") + "\n"));
    QVERIFY(bench->getJournal().filter("chip bitstream").isEmpty());
}

void TestLeaving::aFileThatCannotBeChosenIsToldOnTheConsole()
{
    const QString sentence =
        "The file \"" + bench->writeFile("empty.ksb", "") + "\" is empty: name a bitstream file.\n";
    play("leave-when-idle", {"empty.ksb"});
    QCOMPARE(program->getOutput().count(sentence), 1);
    QCOMPARE(program->getErrors().count(sentence), 1);
}

void TestLeaving::settingsThatCannotBeUnderstoodArePutAside_data()
{
    QTest::addColumn<QByteArray>("nonsense");
    QTest::newRow("a heading without its end") << QByteArray("[Window\nno sign of equality\n");
    QTest::newRow("a text") << QByteArray("Dear diary,\nit rains.\n");
    QTest::newRow("zeros, after a power failure") << QByteArray(4096, '\0');
    QTest::newRow("bytes") << QByteArray("\xff\xfe\x01=\x02\n\x9c\x00\x1b[2J\n\"", 15);
    QTest::newRow("a line among others") << QByteArray("[ScopeLeaf]\nfilename=x\nnonsense\n");
}

void TestLeaving::settingsThatCannotBeUnderstoodArePutAside()
{
    QFETCH(QByteArray, nonsense);
    QDir().mkpath("config/Kestoboard");
    const QString file = bench->writeFile("config/Kestoboard/kestoboard.conf", nonsense);
    bench->writeFile("config/Kestoboard/kestoboard.conf.bad", "of another time");
    program->setVariable("XDG_CONFIG_HOME", bench->getPath("config"));
    play("leave-when-idle");
    QCOMPARE(program->getOutput().count("The settings in " + file + " cannot be understood"), 1);
    QCOMPARE(bench->readFile("config/Kestoboard/kestoboard.conf.bad2"), nonsense);
    QCOMPARE(bench->readFile("config/Kestoboard/kestoboard.conf.bad"),
             QByteArray("of another time"));
    // The new ones are kept.
    QVERIFY(bench->readFile("config/Kestoboard/kestoboard.conf").contains("frequencyUnit=MHz"));
}

void TestLeaving::settingsThatCannotBeUsedAreNamed()
{
    const QMap<QString, QVariant> unusable{{"Window/scheme", "Purple"},
                                           {"Window/consoleLimit", "99999999999999"},
                                           {"Window/consoleFontSize", "inf"},
                                           {"Activity/patience", "-1"},
                                           {"Activity/transferPatience", "1e99"}};
    for (auto setting = unusable.begin(); setting != unusable.end(); ++setting) {
        program->setSetting(setting.key(), setting.value());
    }
    program->setSetting("ScopeLeaf/filename", "kept.vcd");
    play("leave-when-idle");
    QVERIFY2(program->getOutput().contains(
                 "Settings that cannot be used are passed over: Window/scheme, "
                 "Window/consoleLimit, Window/consoleFontSize, Activity/patience, "
                 "Activity/transferPatience\n"),
             qPrintable(program->getOutput()));
    QCOMPARE(program->getSetting("Window/consoleLimit").toInt(), 200'000);
    QVERIFY(!program->getSetting("Activity/patience").isValid());
    QCOMPARE(program->getSetting("ScopeLeaf/filename").toString(), QString("kept.vcd"));
}

void TestLeaving::anExceptionThatLeavesASlotIsReported_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("report");
    QTest::newRow("a failure of the panel") << "throw-failure"
                                            << "Something broke";
    QTest::newRow("a standard exception") << "throw-standard"
                                          << "An action ended early: out of luck\n";
    QTest::newRow("something else") << "throw-strange"
                                    << "An action ended early for a reason that is not known.\n";
}

void TestLeaving::anExceptionThatLeavesASlotIsReported()
{
    QFETCH(QString, part);
    QFETCH(QString, report);
    play(part);
    const QString output = program->getOutput();
    QVERIFY2(output.contains(report), qPrintable(output));
    QVERIFY(output.indexOf("goes on\n") > output.indexOf(report));
}

KESTOBOARD_TEST_MAIN(TestLeaving)
#include "tst_leaving.moc"
