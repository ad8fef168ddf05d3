// An answer in two pieces, cut after each of its bytes in turn.

#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>

#include <QFileInfo>

using Test::Bench;
using Test::CommandType;

/// What the panel makes of an answer does not depend on where it is cut.
class TestAnswerCuts : public QObject
{
    Q_OBJECT

private slots:
    void everyCutGivesTheSameReply_data();
    void everyCutGivesTheSameReply();
    void everyCutGivesTheSameVerdict_data();
    void everyCutGivesTheSameVerdict();

private:
    /// A board, and a fault for each cut: the first such command is cut after its first byte, the
    /// second one after two, and so on.
    static QString getScenario(const QString& command, int size);
    /// The answer to a command, in one piece.
    static std::string getAnswer(const Test::Panel& panel, const QString& command);
    /// Waits until the transcript has all of an answer: what comes late would meet the next
    /// command.
    static void awaitTranscript(qint64 size);
};

QString TestAnswerCuts::getScenario(const QString& command, int size)
{
    QString scenario = Bench::board("Aurora", "selected = true\n");
    for (int cut = 1; cut < size; ++cut) {
        scenario += Bench::fault(
            command, QString("skip = %1\nkind = \"split\"\nat = [%2]").arg(cut - 1).arg(cut));
    }
    return scenario;
}

std::string TestAnswerCuts::getAnswer(const Test::Panel& panel, const QString& command)
{
    return panel.run(CommandType::Control, command.toStdString());
}

void TestAnswerCuts::awaitTranscript(qint64 size)
{
    // The writing itself is one of the events.
    while (QFileInfo("ksbase.log").size() < size) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCOMPARE(QFileInfo("ksbase.log").size(), size);
}

void TestAnswerCuts::everyCutGivesTheSameReply_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("short") << "board get mode";
    QTest::newRow("long") << "help";
    QTest::newRow("refused") << "board get nothing";
}

void TestAnswerCuts::everyCutGivesTheSameReply()
{
    QFETCH(QString, command);
    Bench bench;
    bench.setScenario(Bench::board("Aurora", "selected = true\n"));
    const Test::Panel panel;
    const std::string whole = getAnswer(panel, command);
    const int size = int(whole.size());
    bench.setScenario(getScenario(command, size));
    panel.getEngine()->refreshTamsaMap();
    Test::ConsoleRecorder recorder;
    bench.takeJournal();
    qint64 written = QFileInfo("ksbase.log").size();
    for (int cut = 1; cut < size; ++cut) {
        const std::string reply = getAnswer(panel, command);
        // The mark ends the reply; the line end after it comes in time, or does not.
        const bool isAfterMark = cut == size - 1;
        QVERIFY2(
            reply == whole || (isAfterMark && reply + '\n' == whole),
            qPrintable(
                QString("cut after %1 bytes: %2").arg(cut).arg(QString::fromStdString(reply))));
        written += 2 + command.size() + size;
        awaitTranscript(written);
    }
    QCOMPARE(recorder.getLines(), QStringList());
    QCOMPARE(bench.takeJournal().count(command), size - 1);
}

void TestAnswerCuts::everyCutGivesTheSameVerdict_data()
{
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("done") << false;
    QTest::newRow("refused") << true;
}

void TestAnswerCuts::everyCutGivesTheSameVerdict()
{
    QFETCH(bool, isRefused);
    Bench bench;
    const QString file = bench.writeFile("design.ksb", "content");
    const QString command = "chip bitstream load " + (isRefused ? file + ".gone" : file);
    bench.setScenario(Bench::board("Aurora", "selected = true\n"));
    const Test::Panel panel;
    const int size = int(getAnswer(panel, command).size());
    bench.setScenario(getScenario(command, size));
    panel.getEngine()->refreshTamsaMap();
    bench.takeJournal();
    qint64 written = QFileInfo("ksbase.log").size();
    for (int cut = 1; cut < size; ++cut) {
        Test::ConsoleRecorder recorder;
        panel.getEngine()->sendBitstream(command.section(' ', 3).toStdString());
        QCOMPARE(recorder.getLines(),
                 QStringList(isRefused ? "E: Bitstream failed" : "Bitstream successfully sent"));
        written += 2 + command.size() + size;
        awaitTranscript(written);
    }
    QCOMPARE(bench.takeJournal().count(command), size - 1);
}

KESTOBOARD_TEST_MAIN(TestAnswerCuts)

#include "tst_answer_cuts.moc"
