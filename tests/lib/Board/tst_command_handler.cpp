#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Locator.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>

#include <QSignalSpy>
#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

using Board::CommandHandler;
using Test::CommandType;

/// The commands of the simulated tool that these tests send; each is answered with "OK".
static const char firstCommand[] = "board set force_bit on";
static const char secondCommand[] = "board set force_bit off";

class TestCommandHandler : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void createRefusesItsArguments_data();
    void createRefusesItsArguments();
    void aRefusalMovesNoNumberAndQueuesNothing();
    void theArgumentsAreTestedInOrder();
    void aNewHandlerIsQueued();
    void theTypeIsTheNumberOfThePriority();
    void handlersOfOneTypeRunInTheOrderOfCreation();
    void aLowerTypeOvertakesWhatWaits();
    void theOrderComparesTypeThenNumber();
    void theOrderPutsNullFirst();
    void theOrderComparesNumbersAsUnsigned();
    void aFinishedHandlerLeavesThePendingsButStaysInTheQueue();
    void laterHandlersDoNotWaitForADestroy();
    void aRunningHandlerIsPendingAndTheOnlyOneRunning();
    void theViewsAreLive();
    void theResultIsInPlaceWhenItIsAnnounced();
    void setRunningChangesNothingElse();
    void aWaitForNothingReturnsAtOnce();
    void nestedWaitsEndInReverseOrder();
    void aWaitInAPostedEventServesWhatWasPostedBefore();
    void theClassHasOneSignalAndNoSlot();
    void theHandlerTellsItsRecord();
    void aHandlerDestroyedWhileItWaitsIsNeverSent();
    void aHandlerDestroyedWhileItRunsIsForgotten();
    void aHandlerCanOutliveTheEngine();
    void nothingIsSentOnceTheEngineEnds();

private:
    CommandHandler* create(CommandType type, const std::string& text)
    {
        return CommandHandler::create(type, text, panel->getEngine());
    }

    std::unique_ptr<Test::Bench> bench;
    std::unique_ptr<Test::Panel> panel;
};

void TestCommandHandler::init()
{
    bench = std::make_unique<Test::Bench>();
    bench->setScenario(Test::Bench::board("Aurora"));
    panel = std::make_unique<Test::Panel>();
    bench->takeJournal();
}

void TestCommandHandler::cleanup()
{
    bench->release();
    panel.reset();
    bench.reset();
}

void TestCommandHandler::createRefusesItsArguments_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("hasEngine");
    QTest::addColumn<QString>("message");
    QTest::newRow("type") << 0 << "board list" << true << "Invalid commandType";
    QTest::newRow("text") << 1 << "" << true << "Empty command";
    QTest::newRow("engine") << 1 << "board list" << false << "Null ksBaseHandler";
}

void TestCommandHandler::createRefusesItsArguments()
{
    QFETCH(int, type);
    QFETCH(QString, command);
    QFETCH(bool, hasEngine);
    QFETCH(QString, message);
    try {
        CommandHandler::create(static_cast<CommandType>(type), command.toStdString(),
                               hasEngine ? panel->getEngine() : nullptr);
        QFAIL("nothing was refused");
    } catch (const Orvex::FactoryFailed& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains(message));
        QCOMPARE(failure.getFunction(), std::string("preCreate"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/CommandHandler"));
    }
}

void TestCommandHandler::aRefusalMovesNoNumberAndQueuesNothing()
{
    QVERIFY_EXCEPTION_THROWN(create(CommandType::Invalid, "board list"), Orvex::FactoryFailed);
    QVERIFY_EXCEPTION_THROWN(create(CommandType::Control, ""), Orvex::FactoryFailed);
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    QCOMPARE(handler->getId(), std::uint64_t(0));
    handler->destroy();
}

void TestCommandHandler::theArgumentsAreTestedInOrder()
{
    const auto getRefusal = [](CommandType type, const std::string& text) {
        try {
            CommandHandler::preCreate(type, text, nullptr);
        } catch (const Orvex::FactoryFailed& failure) {
            return QString::fromStdString(failure.getMessage());
        }
        return QString();
    };
    QVERIFY(getRefusal(CommandType::Invalid, "").contains("Invalid commandType"));
    QVERIFY(getRefusal(CommandType::Control, "").contains("Empty command"));
    QVERIFY(getRefusal(CommandType::Control, "x").contains("Null ksBaseHandler"));
}

void TestCommandHandler::aNewHandlerIsQueued()
{
    CommandHandler* const handler = create(CommandType::Refresh, "board list");
    QCOMPARE(handler->getCommandType(), CommandType::Refresh);
    QCOMPARE(handler->getCommand(), std::string("board list"));
    QCOMPARE(handler->getResult(), std::string());
    QVERIFY(!handler->hasFinished());
    QVERIFY(!handler->isRunning());
    QVERIFY(handler->parent() == nullptr);
    QCOMPARE(panel->getEngine()->getCommandHandlers().getFirst(), handler);
    handler->destroy();
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
}

void TestCommandHandler::theTypeIsTheNumberOfThePriority()
{
    QCOMPARE(int(CommandType::Invalid), 0);
    QCOMPARE(int(CommandType::Control), 1);
    QCOMPARE(int(CommandType::Transfer), 2);
    QCOMPARE(int(CommandType::Refresh), 3);
    QCOMPARE(int(CommandType::Monitor), 4);
    QCOMPARE(sizeof(CommandType), std::size_t(4));
}

void TestCommandHandler::handlersOfOneTypeRunInTheOrderOfCreation()
{
    const std::vector<CommandHandler*> handlers{create(CommandType::Control, secondCommand),
                                                create(CommandType::Control, firstCommand),
                                                create(CommandType::Control, secondCommand)};
    for (CommandHandler* const handler : handlers) {
        QTRY_VERIFY(handler->hasFinished());
    }
    QCOMPARE(bench->takeJournal(), QStringList({secondCommand, firstCommand, secondCommand}));
    for (CommandHandler* const handler : handlers) {
        handler->destroy();
    }
}

void TestCommandHandler::aLowerTypeOvertakesWhatWaits()
{
    // All are made in one turn of the event loop, before the worker can choose.
    CommandHandler* const monitor = create(CommandType::Monitor, "board monitor get 0");
    CommandHandler* const refresh = create(CommandType::Refresh, "board list");
    CommandHandler* const transfer = create(CommandType::Transfer, "chip bitstream load none");
    CommandHandler* const control = create(CommandType::Control, firstCommand);
    QTRY_VERIFY(monitor->hasFinished());
    QCOMPARE(bench->takeJournal(), QStringList({firstCommand, "chip bitstream load none",
                                                "board list", "board monitor get 0"}));
    for (CommandHandler* const handler : {monitor, refresh, transfer, control}) {
        QVERIFY(handler->hasFinished());
        handler->destroy();
    }
}

void TestCommandHandler::theOrderComparesTypeThenNumber()
{
    const Board::KSBaseHandler::CommandHandlerSetLess less{};
    CommandHandler* const refresh = create(CommandType::Refresh, "a");
    CommandHandler* const early = create(CommandType::Control, "b");
    CommandHandler* const late = create(CommandType::Control, "a");
    QVERIFY(less(early, refresh));
    QVERIFY(!less(refresh, early));
    QVERIFY(less(early, late));
    QVERIFY(!less(late, early));
    QVERIFY(!less(early, early));
    for (CommandHandler* const handler : {refresh, early, late}) {
        handler->destroy();
    }
}

void TestCommandHandler::theOrderPutsNullFirst()
{
    const Board::KSBaseHandler::CommandHandlerSetLess less{};
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    QVERIFY(less(nullptr, handler));
    QVERIFY(!less(handler, nullptr));
    QVERIFY(!less(nullptr, nullptr));
    handler->destroy();
}

void TestCommandHandler::theOrderComparesNumbersAsUnsigned()
{
    const Board::KSBaseHandler::CommandHandlerSetLess less{};
    const auto highest = static_cast<CommandType>(0xFFFFFFFFU);
    CommandHandler* const last = create(highest, "x");
    CommandHandler* const first = create(CommandType::Control, "x");
    QVERIFY(less(first, last));
    QVERIFY(!less(last, first));
    last->destroy();
    first->destroy();
}

void TestCommandHandler::aFinishedHandlerLeavesThePendingsButStaysInTheQueue()
{
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    const Board::CommandHandlers queue = panel->getEngine()->getCommandHandlers();
    QCOMPARE(queue.getPendings().getFirst(), handler);
    Board::waitCommandHandlerReady(handler);
    QVERIFY(handler->hasFinished());
    QVERIFY(!handler->isRunning());
    QVERIFY(queue.getPendings().isEmpty());
    QCOMPARE(queue.getFirst(), handler);
    QCOMPARE(queue.getCount(), 1UL);
    handler->destroy();
    QVERIFY(queue.isEmpty());
}

void TestCommandHandler::laterHandlersDoNotWaitForADestroy()
{
    CommandHandler* const first = create(CommandType::Control, firstCommand);
    Board::waitCommandHandlerReady(first);
    CommandHandler* const second = create(CommandType::Control, secondCommand);
    Board::waitCommandHandlerReady(second);
    QVERIFY(second->hasFinished());
    first->destroy();
    second->destroy();
}

void TestCommandHandler::aRunningHandlerIsPendingAndTheOnlyOneRunning()
{
    bench->setScenario(Test::Bench::board("Aurora") + bench->hold(firstCommand));
    panel->run(CommandType::Refresh, "board list");
    const Board::CommandHandlers queue = panel->getEngine()->getCommandHandlers();
    QVERIFY(queue.getRunnings().isEmpty());

    CommandHandler* const running = create(CommandType::Control, firstCommand);
    CommandHandler* const waiting = create(CommandType::Control, secondCommand);
    QTRY_COMPARE(bench->count(firstCommand), 1);
    QVERIFY(running->isRunning());
    QVERIFY(!waiting->isRunning());
    QCOMPARE(queue.getRunnings().getFirst(), running);
    QCOMPARE(queue.getRunnings().getCount(), 1UL);
    QCOMPARE(queue.getPendings().getFirst(), running);
    QCOMPARE(queue.getPendings().getCount(), 2UL);

    bench->release();
    QTRY_VERIFY(waiting->hasFinished());
    QVERIFY(queue.getRunnings().isEmpty());
    running->destroy();
    waiting->destroy();
}

void TestCommandHandler::theViewsAreLive()
{
    const Orvex::Collection<CommandHandler*> pendings =
        panel->getEngine()->getCommandHandlers().getPendings();
    QVERIFY(pendings.isEmpty());
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    QCOMPARE(pendings.getFirst(), handler);
    Board::waitCommandHandlerReady(handler);
    QVERIFY(pendings.isEmpty());
    QCOMPARE(pendings.getFirst(), nullptr);
    handler->destroy();
}

void TestCommandHandler::theResultIsInPlaceWhenItIsAnnounced()
{
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    std::string announced;
    connect(
        handler, &CommandHandler::resultReady, handler, [&] { announced = handler->getResult(); },
        Qt::DirectConnection);
    Board::waitCommandHandlerReady(handler);
    QVERIFY(!announced.empty());
    QCOMPARE(announced, handler->getResult());
    handler->destroy();
}

void TestCommandHandler::setRunningChangesNothingElse()
{
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    handler->setRunning(true);
    QVERIFY(handler->isRunning());
    QVERIFY(!handler->hasFinished());
    handler->setRunning(false);
    QVERIFY(!handler->isRunning());
    QVERIFY(!handler->hasFinished());
    handler->destroy();
}

void TestCommandHandler::aWaitForNothingReturnsAtOnce()
{
    bool eventWasServed = false;
    QMetaObject::invokeMethod(
        this, [&] { eventWasServed = true; }, Qt::QueuedConnection);
    Board::waitCommandHandlerReady(nullptr);
    QVERIFY(!eventWasServed);
    QTRY_VERIFY(eventWasServed);
}

void TestCommandHandler::nestedWaitsEndInReverseOrder()
{
    bench->setScenario(Test::Bench::board("Aurora") + bench->hold(firstCommand));
    panel->run(CommandType::Refresh, "board list");
    QStringList ends;
    QTimer::singleShot(0, this, [&] {
        // On top of the wait below: its command is answered first, but the wait above ends first.
        CommandHandler* const inner = create(CommandType::Control, secondCommand);
        bench->release();
        Board::waitCommandHandlerReady(inner);
        ends += "inner";
        inner->destroy();
    });
    CommandHandler* const outer = create(CommandType::Control, firstCommand);
    Board::waitCommandHandlerReady(outer);
    ends += "outer";
    outer->destroy();
    QCOMPARE(ends, QStringList({"inner", "outer"}));
    const QStringList journal = bench->getJournal();
    QVERIFY(journal.lastIndexOf(firstCommand) < journal.lastIndexOf(secondCommand));
}

void TestCommandHandler::aWaitInAPostedEventServesWhatWasPostedBefore()
{
    bench->setScenario(Test::Bench::board("Aurora") + bench->hold(firstCommand));
    panel->run(CommandType::Refresh, "board list");
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    QTRY_VERIFY(handler->isRunning());
    // From here on nothing wakes the event loop but what is posted, and the guard.
    for (QTimer* const timer : panel->getEngine()->findChildren<QTimer*>()) {
        timer->stop();
    }
    bool isRescued = false;
    QTimer guard;
    connect(&guard, &QTimer::timeout, this, [&] {
        isRescued = true;
        bench->release();
    });
    guard.start(std::chrono::seconds(30));
    QMetaObject::invokeMethod(
        this, [&] { Board::waitCommandHandlerReady(handler); }, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this, [this] { bench->release(); }, Qt::QueuedConnection);
    QTRY_VERIFY(handler->hasFinished());
    QVERIFY(!isRescued);
    handler->destroy();
}

void TestCommandHandler::theClassHasOneSignalAndNoSlot()
{
    const QMetaObject& meta = CommandHandler::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("resultReady()"));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
}

void TestCommandHandler::theHandlerTellsItsRecord()
{
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    Board::waitCommandHandlerReady(handler);
    const std::string alias = std::string("CommandHandler[") + firstCommand + "]";
    QCOMPARE(handler->getAlias(), alias);
    QCOMPARE(handler->_getLabel(), alias);
    QVERIFY(handler->_hasRecord());

    const std::unique_ptr<Orvex::Slot> slot(handler->_getSlot());
    QCOMPARE(slot->getDataLabel(), alias);
    QVERIFY(!slot->isTerminal());
    const std::unique_ptr<Orvex::Record> record(handler->_getRecord());
    QCOMPARE(record->getLabel(), alias);
    QStringList lines;
    for (Orvex::Locator<Orvex::Slot*> at = record->getSlots().getLocator(); at.isValid();
         at.progress()) {
        const Orvex::Slot* const value = at.getCurrent();
        lines += QString::fromStdString(value->_getLabel() + "|" + value->getDataLabel());
    }
    QCOMPARE(lines, QStringList({"|CommandHandler", "Type|1", QString("Command|") + firstCommand,
                                 "Result|" + QString::fromStdString(handler->getResult())}));
    handler->destroy();
}

void TestCommandHandler::aHandlerDestroyedWhileItWaitsIsNeverSent()
{
    create(CommandType::Control, firstCommand)->destroy();
    panel->run(CommandType::Control, secondCommand);
    QCOMPARE(bench->takeJournal(), QStringList({secondCommand}));
}

void TestCommandHandler::aHandlerDestroyedWhileItRunsIsForgotten()
{
    bench->setScenario(Test::Bench::board("Aurora") + bench->hold(firstCommand));
    panel->run(CommandType::Refresh, "board list");
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    QTRY_COMPARE(bench->count(firstCommand), 1);
    handler->destroy();
    QVERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    QVERIFY(panel->getEngine()->isRunning());

    CommandHandler* const next = create(CommandType::Control, secondCommand);
    bench->release();
    Board::waitCommandHandlerReady(next);
    QCOMPARE(QString::fromStdString(next->getResult()).count("COMMAND SUCCEEDED"), 1);
    next->destroy();
}

void TestCommandHandler::aHandlerCanOutliveTheEngine()
{
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    panel.reset();
    QVERIFY(!handler->isRunning());
    handler->destroy();
}

void TestCommandHandler::nothingIsSentOnceTheEngineEnds()
{
    bench->takeJournal();
    CommandHandler* const handler = create(CommandType::Control, firstCommand);
    // By then the command has been chosen, and the worker has not been able to send it.
    QMetaObject::invokeMethod(
        this, [this] { panel.reset(); }, Qt::QueuedConnection);
    QTRY_VERIFY(panel == nullptr);
    QCOMPARE(bench->takeJournal(), QStringList());
    handler->destroy();
}

KESTOBOARD_TEST_MAIN(TestCommandHandler)

#include "tst_command_handler.moc"
