#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>

#include <QPointer>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <vector>

using Board::CommandHandler;
using Test::Bench;
using Test::CommandType;

namespace
{

/// Answers each command with its own text.
const QByteArray echoTool =
    "#!/bin/sh\nwhile read -r line; do echo \"$line COMMAND SUCCEEDED\" >&2; done\n";

} // namespace

/// The hand-offs between the two threads under load: whatever the moment, nothing crashes, hangs or
/// gets another one's reply.
class TestEngineStress : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyCommandGetsItsOwnReplyInTheOrderOfTheQueue();
    void handlersMayLeaveAtAnyMoment();
    void theEngineMayEndAtAnyMoment();
    void theProcessEndsWithStatusOneAtAnyMoment_data();
    void theProcessEndsWithStatusOneAtAnyMoment();
    void waitsNestDeeply();

private:
    std::unique_ptr<Bench> bench;
    std::mt19937 random{20261121};
};

void TestEngineStress::init()
{
    bench = std::make_unique<Bench>();
    bench->setTool(echoTool);
}

void TestEngineStress::cleanup()
{
    bench.reset();
}

void TestEngineStress::everyCommandGetsItsOwnReplyInTheOrderOfTheQueue()
{
    const Test::Panel panel;
    std::vector<CommandHandler*> handlers;
    std::map<std::pair<int, std::uint64_t>, std::string> expected;
    for (int number = 0; number < 3000; ++number) {
        const auto type = static_cast<CommandType>(1 + random() % 4);
        const std::string text = "command " + std::to_string(number);
        handlers.push_back(CommandHandler::create(type, text, panel.getEngine()));
        expected[{int(type), handlers.back()->getId()}] = text;
    }
    // The last one of the queue is answered last.
    Board::waitCommandHandlerReady(*std::max_element(
        handlers.begin(), handlers.end(), Board::KSBaseHandler::CommandHandlerSetLess()));
    for (CommandHandler* const handler : handlers) {
        QCOMPARE(handler->getResult(), handler->getCommand() + " COMMAND SUCCEEDED\n");
        handler->destroy();
    }
    // All were made in one turn, so the transcript has them by type, then by number.
    QByteArray transcript = ">>ksbase2_cli -s -x\n>board list\nboard list COMMAND SUCCEEDED\n";
    for (const auto& command : expected) {
        const QByteArray text = QByteArray::fromStdString(command.second);
        transcript += ">" + text + "\n" + text + " COMMAND SUCCEEDED\n";
    }
    QVERIFY(bench->readFile("ksbase.log") == transcript);
    QCOMPARE(panel.getEngine()->getCurrentCommandID(), std::uint64_t(0));
}

void TestEngineStress::handlersMayLeaveAtAnyMoment()
{
    const Test::Panel panel;
    std::vector<CommandHandler*> handlers;
    int finished = 0;
    for (int number = 0; number < 5000; ++number) {
        const std::string text = "command " + std::to_string(number);
        handlers.push_back(CommandHandler::create(static_cast<CommandType>(1 + random() % 4), text,
                                                  panel.getEngine()));
        if (number % 16 == 0) {
            // However slow the tool is, some of those that leave have had their reply.
            Board::waitCommandHandlerReady(handlers.back());
        }
        for (unsigned turns = random() % 4; turns > 0; --turns) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        if (handlers.size() > 8) {
            const auto chosen = handlers.begin() + static_cast<long>(random() % handlers.size());
            if ((*chosen)->hasFinished()) {
                ++finished;
                QCOMPARE((*chosen)->getResult(), (*chosen)->getCommand() + " COMMAND SUCCEEDED\n");
            }
            (*chosen)->destroy();
            handlers.erase(chosen);
        }
    }
    for (CommandHandler* const handler : handlers) {
        QTRY_VERIFY(handler->hasFinished());
        QCOMPARE(handler->getResult(), handler->getCommand() + " COMMAND SUCCEEDED\n");
        handler->destroy();
    }
    QVERIFY(finished > 0);
    QVERIFY(panel.getEngine()->getCommandHandlers().isEmpty());
}

void TestEngineStress::theEngineMayEndAtAnyMoment()
{
    for (int round = 0; round < 100; ++round) {
        auto panel = std::make_unique<Test::Panel>();
        std::vector<CommandHandler*> handlers;
        for (unsigned count = random() % 5; count > 0; --count) {
            handlers.push_back(CommandHandler::create(static_cast<CommandType>(1 + random() % 4),
                                                      "command", panel->getEngine()));
            for (unsigned turns = random() % 6; turns > 0; --turns) {
                QCoreApplication::processEvents(QEventLoop::AllEvents);
            }
        }
        panel.reset();
        for (CommandHandler* const handler : handlers) {
            handler->destroy();
        }
    }
}

void TestEngineStress::theProcessEndsWithStatusOneAtAnyMoment_data()
{
    QTest::addColumn<QByteArray>("lastAct");
    QTest::newRow("before the answer") << QByteArray("kill -9 $$");
    QTest::newRow("in mid-answer") << QByteArray("printf 'COMMAND SUCC' >&2; kill -9 $$");
    QTest::newRow("with the answer") << QByteArray("echo 'COMMAND SUCCEEDED' >&2; kill -9 $$");
    QTest::newRow("exit with the answer") << QByteArray("echo 'COMMAND SUCCEEDED' >&2; exit 0");
    QTest::newRow("without its input") << QByteArray("exec <&-; kill -9 $$");
}

void TestEngineStress::theProcessEndsWithStatusOneAtAnyMoment()
{
    QFETCH(QByteArray, lastAct);
    QStringList commands;
    for (int number = 0; number < 20; ++number) {
        commands += QString("command %1").arg(number);
    }
    for (int round = 0; round < 12; ++round) {
        const QByteArray count = QByteArray::number(int(random() % 20));
        bench->setTool("#!/bin/sh\ncount=" + count +
                       "\nwhile read -r line; do [ $count -gt 0 ] || break; count=$((count - 1))\n"
                       "echo 'COMMAND SUCCEEDED' >&2; done\n" +
                       lastAct + "\n");
        QProcess probe;
        probe.start(KESTOBOARD_PANEL_PROBE, commands);
        QVERIFY(probe.waitForFinished(-1));
        QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
        const QByteArray said = probe.readAllStandardOutput();
        QVERIFY2(probe.exitCode() == 1, said + probe.readAllStandardError());
        QCOMPARE(said.count("This should not happen"), 1);
    }
}

void TestEngineStress::waitsNestDeeply()
{
    const Test::Panel panel;
    const int depth = 50;
    int ended = 0;
    std::function<void(int)> wait = [&](int level) {
        if (level < depth) {
            QTimer::singleShot(0, this, [&wait, level] { wait(level + 1); });
        }
        const std::string text = "level " + std::to_string(level);
        QCOMPARE(panel.run(CommandType::Control, text), text + " COMMAND SUCCEEDED\n");
        ++ended;
    };
    wait(1);
    QTRY_COMPARE(ended, depth);
}

KESTOBOARD_TEST_MAIN(TestEngineStress)

#include "tst_engine_stress.moc"
