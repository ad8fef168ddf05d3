// A storm of commands from timers, buttons and nested waits while boards come and go: every command
// reaches the tool exactly once and in the order of the queue, every reply its own caller.

#include "faults/ArrivalLog.h"
#include "faults/Load.h"
#include "faults/QueueChecker.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/RunSize.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>

#include <QBitArray>
#include <QElapsedTimer>

#include <memory>
#include <random>

using Test::Bench;

namespace
{

/// A storm that takes longer to come to rest hangs.
const int hangGuard = 60'000;

QStringList getBoards()
{
    const QString channel = "[[board.channel]]\nname = \"VCore\"\nvoltage = 1.0\ncurrent = 0.3\n";
    return {Bench::board("KS-Dev A", channel), Bench::board("KS-Dev B", channel),
            Bench::board("KS-Dev C", "mode_locked = true\n" + channel)};
}

} // namespace

class TestStorm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyCommandIsServedOnceInItsOrderAndAnswered();

private:
    void plugBoards(Board::KSBaseHandler* engine);
    void rage(Test::Load* load, const Test::QueueChecker& checker);
    void countBoards(const Orvex::Message& message);

    std::unique_ptr<Bench> bench;
    std::mt19937 random;
    QBitArray plugged;
    int comings = 0;
    int goings = 0;
};

void TestStorm::init()
{
    bench = std::make_unique<Bench>();
    bench->setScenario(getBoards().join(QString()));
    plugged.fill(true, getBoards().size());
}

void TestStorm::cleanup()
{
    bench.reset();
}

/// One of the boards comes or goes, and the panel is told at once.
void TestStorm::plugBoards(Board::KSBaseHandler* engine)
{
    const QStringList boards = getBoards();
    const int changed = static_cast<int>(random() % static_cast<unsigned>(boards.size()));
    plugged.toggleBit(changed);
    QString scenario;
    for (int board = 0; board < boards.size(); ++board) {
        if (plugged.testBit(board)) {
            scenario += boards.at(board);
        }
    }
    bench->setScenario(scenario);
    engine->refreshTamsaMap();
}

void TestStorm::countBoards(const Orvex::Message& message)
{
    comings += message.text.rfind("Connected ", 0) == 0 ? 1 : 0;
    goings += message.text.rfind("Disconnected ", 0) == 0 ? 1 : 0;
}

/// Lets the load loose until enough commands have come, and boards have come and gone.
void TestStorm::rage(Test::Load* load, const Test::QueueChecker& checker)
{
    const std::size_t size = static_cast<std::size_t>(getRunSize(3000, 100'000));
    load->start();
    while (checker.getArrivalCount() < size || comings == 0 || goings == 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    load->stop();
}

void TestStorm::everyCommandIsServedOnceInItsOrderAndAnswered()
{
    unsigned seed = std::random_device()();
    if (qEnvironmentVariableIsSet("KESTOBOARD_SEED")) {
        seed = qEnvironmentVariable("KESTOBOARD_SEED").toUInt();
    }
    random.seed(seed);
    qInfo("KESTOBOARD_SEED=%u", seed);
    const Test::Panel panel;
    Board::KSBaseHandler* const engine = panel.getEngine();
    panel.getWindow()->show();
    connect(Orvex::console, &Orvex::Console::messageAdded, this, &TestStorm::countBoards);
    Test::QueueChecker checker;
    Test::ArrivalLog arrivals(engine, bench->getPath("ksbase.log"), &checker);
    Test::Load load(panel, seed);
    for (int share = 0; share < 3; ++share) {
        load.addAction([this, engine] { plugBoards(engine); });
    }
    QElapsedTimer clock;
    clock.start();

    rage(&load, checker);
    QTRY_VERIFY_WITH_TIMEOUT(load.isOver() && engine->getCommandHandlers().isEmpty(), hangGuard);

    QCOMPARE(load.getComplaints(), QStringList());
    const QStringList served = bench->getJournal();
    QVERIFY2(served == arrivals.getSent(), "the tool has read other commands than were written");
    QCOMPARE(checker.check(served.mid(arrivals.getSentBefore())), QString());
    QCOMPARE(engine->getCurrentCommandID(), std::uint64_t(0));
    QVERIFY(!engine->isRunning() && !engine->isRefreshing() && !engine->isMonitoring());
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions(), QStringList());
    qInfo("%d commands in %.1f s, %d of them with a word of their own; %d waits on top of each "
          "other at most; boards came %d times and went %d times; the counter began again %d times",
          int(checker.getArrivalCount()), double(clock.elapsed()) / 1000, load.getWordCount(),
          load.getGreatestDepth(), comings, goings, arrivals.getFirstNumberCount());
}

KESTOBOARD_TEST_MAIN(TestStorm)
#include "tst_storm.moc"
