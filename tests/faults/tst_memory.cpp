#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/Shortage.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/KSBaseHandler.h>

#include <memory>
#include <optional>

using Test::Bench;
using Test::CommandType;

namespace
{

const int replySize = 48'000'000;
/// A reply takes two bytes for each of its characters while it is gathered.
const rlim_t spareMemory = 64'000'000;

const QString lost = "E: The reply of the board tool does not fit into the memory. Nobody knows "
                     "what it said, and its command counts as failed";

} // namespace

/// What the panel does with a reply that the memory cannot hold: it says so, counts the command as
/// failed, sends it once only, and goes on.
class TestMemory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aReplyThatDoesNotFitCountsAsFailed_data();
    void aReplyThatDoesNotFitCountsAsFailed();
    void aListingThatDoesNotFitIsFollowedByTheNext();

private:
    /// A huge answer to that command, which is held back until `runShort` releases it. The tool
    /// knows of it from its next listing on.
    void makeHuge(const QString& command)
    {
        const QString keys = QString("kind = \"large\"\nbytes = %1\n").arg(replySize);
        bench->setScenario(Bench::board("Aurora") + bench->hold(command) +
                           Bench::fault(command, keys));
    }
    /// Does the work; the memory runs short while its command is under way.
    template <class Work>
    void runShort(Work work)
    {
        std::optional<Test::Limit> limit;
        Test::when(
            this,
            [this] {
                return panel->getEngine()->getCommandHandlers().getRunnings().getFirst() != nullptr;
            },
            [this, &limit] {
                limit.emplace(RLIMIT_AS, Test::getAddressSpace() + spareMemory);
                bench->release();
            });
        work();
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::Panel> panel;
};

void TestMemory::init()
{
    bench = std::make_unique<Bench>();
    bench->setScenario(Bench::board("Aurora"));
    panel = std::make_unique<Test::Panel>();
}

void TestMemory::cleanup()
{
    bench->release();
    panel.reset();
    bench.reset();
}

void TestMemory::aReplyThatDoesNotFitCountsAsFailed_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("setting") << "board set mode 'Master SPI'"
                             << "E: Mode change failed";
    QTest::newRow("flash") << "board spi flash program design.ksb"
                           << "E: Program flash memory failed";
    QTest::newRow("load") << "chip bitstream load design.ksb"
                          << "E: Bitstream failed";
}

void TestMemory::aReplyThatDoesNotFitCountsAsFailed()
{
    QFETCH(QString, command);
    QFETCH(QString, verdict);
    bench->writeFile("design.ksb", "content");
    makeHuge(command);
    panel->run(CommandType::Refresh, "board list");
    bench->takeJournal();
    Board::KSBaseHandler* const engine = panel->getEngine();
    Test::ConsoleRecorder recorder;
    runShort([engine, &command] {
        if (command.contains("mode")) {
            engine->setMode("Master SPI");
        } else if (command.contains("flash")) {
            engine->programFlash("design.ksb");
        } else {
            engine->sendBitstream("design.ksb");
        }
    });
    QCOMPARE(recorder.takeLines(), QStringList({lost, verdict}));
    QCOMPARE(bench->takeJournal(), QStringList(command));

    // Nothing of it is left for the next one.
    QVERIFY(engine->getData().isEmpty());
    const std::string reply = panel->run(CommandType::Control, "board get force_bit");
    QCOMPARE(reply, std::string("Forcebit is not set\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(recorder.takeLines(), QStringList());
}

void TestMemory::aListingThatDoesNotFitIsFollowedByTheNext()
{
    makeHuge("board list");
    Test::ConsoleRecorder recorder;
    runShort([this] { panel->getEngine()->refreshTamsaMap(); });
    // As after any listing that failed: no board is known.
    QCOMPARE(recorder.takeLines(), QStringList({lost, "Disconnected Aurora"}));
    bench->takeJournal();
    panel->getEngine()->refreshTamsaMap();
    QVERIFY(recorder.takeLines().contains("Connected Aurora"));
}

KESTOBOARD_TEST_MAIN(TestMemory)

#include "tst_memory.moc"
