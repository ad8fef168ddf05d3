#include <foundation/Console.h>
#include <foundation/Fatal.h>
#include <foundation/HandOff.h>
#include <foundation/Raise.h>

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <functional>
#include <memory>

using namespace Orvex;

Q_DECLARE_METATYPE(Orvex::Level)

namespace
{

using Call = std::function<void(Console&)>;

Fatal makeFailure()
{
    Fatal failure("Empty result");
    failure.with("command", std::string("board list"))
        .locate("executeCommand", "src/lib/Board/KSBaseHandler", 212);
    return failure;
}

const char failureText[] =
    "Empty result (command: board list) [executeCommand, src/lib/Board/KSBaseHandler:212]";

/// Runs a call on another thread, from start to end, while this one serves no events.
void runElsewhere(const std::function<void()>& call)
{
    const std::unique_ptr<QThread> thread(QThread::create(call));
    thread->start();
    thread->wait();
}

} // namespace

Q_DECLARE_METATYPE(Call)

class ConsoleTest : public QObject
{
    Q_OBJECT

private slots:
    void eachOperationGivesItsLevelAndText_data() { addOperations(); }
    void eachOperationGivesItsLevelAndText();
    void aCallFromAnotherThreadDoesNotWaitAndArrivesHere_data() { addOperations(); }
    void aCallFromAnotherThreadDoesNotWaitAndArrivesHere();
    void messagesStandAtTheCurrentDepth();
    void theDepthNeverFallsBelowZero();
    void aMessageFromAnotherThreadStandsAtTheDepthOfItsArrival();
    void messagesOfAnotherThreadKeepTheirOrder();
    void twoThreadsThatPrintAtOnceLoseNothing();
    void callsOnTheirWayVanishWithTheConsole();
    void aMessageKnowsWhenItWasSaid();
    void aMessageCrossesThreadsInAConnection();
    void theLatestMessagesAreKeptUpToALimit();
    void aListenerMayPrint();
    void bytesComeThroughUnchanged();
    void theGlobalIsNullUntilTheApplicationSetsIt();

private:
    static void addOperations();
};

void ConsoleTest::addOperations()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<Level>("level");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const Call& call, Level level, const char* text) {
        QTest::newRow(name) << call << level << QString(text);
    };
    row(
        "print of a string", [](Console& sink) { sink.print(std::string("Loading a"), ""); },
        Level::Normal, "Loading a");
    row(
        "print of a literal", [](Console& sink) { sink.print("Loading a", ""); }, Level::Normal,
        "Loading a");
    row(
        "print with a second text", [](Console& sink) { sink.print("Loading", "again"); },
        Level::Normal, "Loading (again)");
    row(
        "print of a failure", [](Console& sink) { sink.print(makeFailure()); }, Level::Normal,
        failureText);
    row(
        "print of a null pointer",
        [](Console& sink) { sink.print(static_cast<const char*>(nullptr), ""); }, Level::Normal,
        "");
    row(
        "warning", [](Console& sink) { sink.warning("Slow board", ""); }, Level::Warning,
        "Slow board");
    row(
        "warning with a second text", [](Console& sink) { sink.warning("Slow board", "A"); },
        Level::Warning, "Slow board (A)");
    row(
        "error of a string", [](Console& sink) { sink.error(std::string("Bitstream failed"), ""); },
        Level::Error, "Bitstream failed");
    row(
        "error of a literal", [](Console& sink) { sink.error("Bitstream failed", ""); },
        Level::Error, "Bitstream failed");
    row(
        "error with a second text", [](Console& sink) { sink.error("Bitstream failed", "A"); },
        Level::Error, "Bitstream failed (A)");
    row(
        "error of a failure", [](Console& sink) { sink.error(makeFailure()); }, Level::Error,
        failureText);
}

void ConsoleTest::eachOperationGivesItsLevelAndText()
{
    QFETCH(Call, call);
    QFETCH(Level, level);
    QFETCH(QString, text);
    Console sink;
    QSignalSpy added(&sink, SIGNAL(messageAdded(Orvex::Message)));
    call(sink);
    QCOMPARE(added.count(), 1);
    const auto message = added.at(0).at(0).value<Message>();
    QCOMPARE(QString::fromStdString(message.text), text);
    QVERIFY(message.level == level);
    QCOMPARE(message.depth, 0);
    QCOMPARE(sink.getRecentMessages().size(), std::size_t(1));
    QCOMPARE(sink.getRecentMessages().front().text, message.text);
}

void ConsoleTest::aCallFromAnotherThreadDoesNotWaitAndArrivesHere()
{
    QFETCH(Call, call);
    QFETCH(Level, level);
    QFETCH(QString, text);
    Console sink;
    QThread* emitter = nullptr;
    connect(
        &sink, &Console::messageAdded, &sink,
        [&emitter](const Message&) { emitter = QThread::currentThread(); }, Qt::DirectConnection);
    runElsewhere([&sink, &call] { call(sink); });
    QVERIFY(sink.getRecentMessages().empty());
    QCoreApplication::processEvents();
    QCOMPARE(emitter, QThread::currentThread());
    QCOMPARE(sink.getRecentMessages().size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(sink.getRecentMessages().front().text), text);
    QVERIFY(sink.getRecentMessages().front().level == level);
}

void ConsoleTest::messagesStandAtTheCurrentDepth()
{
    Console sink;
    sink.print("out", "");
    sink.indent();
    sink.print("in", "");
    sink.indent();
    sink.error(makeFailure());
    QCOMPARE(sink.getDepth(), 2);
    sink.unindent();
    sink.warning("in again", "");
    sink.unindent();
    sink.error("out again", "");
    QList<int> depths;
    for (const Message& message : sink.getRecentMessages()) {
        depths << message.depth;
    }
    QCOMPARE(depths, (QList<int>{0, 1, 2, 1, 0}));
}

void ConsoleTest::theDepthNeverFallsBelowZero()
{
    Console sink;
    sink.unindent();
    QCOMPARE(sink.getDepth(), 0);
    sink.indent();
    QCOMPARE(sink.getDepth(), 1);
    sink.unindent();
    sink.unindent();
    sink.print("out", "");
    QCOMPARE(sink.getRecentMessages().front().depth, 0);
}

void ConsoleTest::aMessageFromAnotherThreadStandsAtTheDepthOfItsArrival()
{
    Console sink;
    runElsewhere([&sink] { sink.print(makeFailure()); });
    sink.indent();
    QCoreApplication::processEvents();
    QCOMPARE(sink.getRecentMessages().front().depth, 1);
}

void ConsoleTest::messagesOfAnotherThreadKeepTheirOrder()
{
    Console sink;
    runElsewhere([&sink] {
        sink.print(Exception("first"));
        sink.error(Exception("second"));
        sink.print(Exception("third"));
    });
    QCoreApplication::processEvents();
    QStringList texts;
    for (const Message& message : sink.getRecentMessages()) {
        texts << QString::fromStdString(message.text);
    }
    QCOMPARE(texts, (QStringList{"first", "second", "third"}));
}

void ConsoleTest::twoThreadsThatPrintAtOnceLoseNothing()
{
    constexpr int each = 400;
    Console sink;
    QSignalSpy added(&sink, &Console::messageAdded);
    const std::unique_ptr<QThread> worker(QThread::create([&sink] {
        for (int number = 0; number < each; ++number) {
            sink.print(Exception("worker"));
        }
    }));
    worker->start();
    for (int number = 0; number < each; ++number) {
        sink.print("window", "");
        QCoreApplication::processEvents();
    }
    worker->wait();
    QTRY_COMPARE(added.count(), 2 * each);
}

void ConsoleTest::callsOnTheirWayVanishWithTheConsole()
{
    auto sink = std::make_unique<Console>();
    int count = 0;
    connect(sink.get(), &Console::messageAdded, this, [&count](const Message&) { ++count; });
    Console* const target = sink.get();
    runElsewhere([target] { target->print(makeFailure()); });
    sink.reset();
    QCoreApplication::processEvents();
    QCOMPARE(count, 0);
}

void ConsoleTest::aMessageKnowsWhenItWasSaid()
{
    Console sink;
    const QDateTime before = QDateTime::currentDateTime();
    runElsewhere([&sink] { sink.print(makeFailure()); });
    const QDateTime after = QDateTime::currentDateTime();
    QCoreApplication::processEvents();
    const QDateTime time = sink.getRecentMessages().front().time;
    QVERIFY(before <= time && time <= after);
}

void ConsoleTest::aMessageCrossesThreadsInAConnection()
{
    Console sink;
    QThread listenerThread;
    QObject listener;
    QList<QString> texts;
    listener.moveToThread(&listenerThread);
    connect(&sink, &Console::messageAdded, &listener, [&](const Message& message) {
        texts << QString::fromStdString(message.text);
        Orvex::handOver(&texts);
        listenerThread.quit();
    });
    listenerThread.start();
    sink.print("across", "");
    listenerThread.wait();
    Orvex::takeOver(&texts);
    QCOMPARE(texts, QList<QString>{"across"});
}

void ConsoleTest::theLatestMessagesAreKeptUpToALimit()
{
    Console sink;
    QVERIFY(sink.getRecentMessages().empty());
    for (int number = 0; number < 1003; ++number) {
        sink.print(std::to_string(number), "");
    }
    const std::deque<Message> messages = sink.getRecentMessages();
    QCOMPARE(messages.size(), std::size_t(1000));
    QCOMPARE(messages.front().text, std::string("3"));
    QCOMPARE(messages.back().text, std::string("1002"));
}

void ConsoleTest::aListenerMayPrint()
{
    Console sink;
    connect(&sink, &Console::messageAdded, &sink, [&sink](const Message& message) {
        if (message.text == "question") {
            sink.print("answer", "");
        }
    });
    sink.print("question", "");
    QCOMPARE(sink.getRecentMessages().size(), std::size_t(2));
    QCOMPARE(sink.getRecentMessages().back().text, std::string("answer"));
}

void ConsoleTest::bytesComeThroughUnchanged()
{
    const std::string bytes("a\0b\xb0\nc", 6);
    Console sink;
    sink.print(bytes, "");
    QCOMPARE(sink.getRecentMessages().front().text, bytes);
}

void ConsoleTest::theGlobalIsNullUntilTheApplicationSetsIt()
{
    QVERIFY(Orvex::console == nullptr);
}

QTEST_GUILESS_MAIN(ConsoleTest)
#include "tst_console.moc"
