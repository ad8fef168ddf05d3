#include <foundation/Console.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Guard.h>

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace Orvex;

namespace
{

struct Report {
    std::string label;
    std::string message;
    std::string function;
    std::string file;
    unsigned long line = 0;
};

/// What the guard of the entry point "onSample" reports of some work.
std::vector<Report> runGuarded(const std::function<void()>& work)
{
    std::vector<Report> reports;
    guard("onSample", "src/lib/Board/Sample", 77, work, [&reports](const Exception& failure) {
        Report report;
        report.label = failure._getLabel();
        report.message = failure.Exception::getMessage();
        if (const auto* located = dynamic_cast<const Error*>(&failure)) {
            report.function = located->getFunction();
            report.file = located->getFile();
            report.line = located->getLine();
        }
        reports.push_back(report);
    });
    return reports;
}

/// A thread that ends only when it is told to, after guarded work that fails.
class FailingWorker : public QThread
{
public:
    explicit FailingWorker(Console& shown)
        : sink(&shown)
    {
    }

protected:
    void run() override
    {
        guard(
            "launch", "src/lib/Board/Scheduler", 5, [] { throw std::runtime_error("lost"); },
            [this](const Exception& failure) { sink->print(failure); });
        quit();
        exec();
    }

private:
    Console* sink;
};

} // namespace

class GuardTest : public QObject
{
    Q_OBJECT

private slots:
    void workThatSucceedsReportsNothing();
    void aStandardExceptionIsReportedAsFatal();
    void aThrownIntegerIsReportedAsStrange();
    void anOwnFailurePassesUnchanged();
    void theRootOfTheFamilyPassesUnchanged();
    void theClassOfAFailureStays();
    void executionGoesOnAfterTheGuard();
    void theStateStaysAsTheFailureLeftIt();
    void workThatCannotBeCopiedIsRun();
    void aFailureIsOneErrorOfTheConsole_data();
    void aFailureIsOneErrorOfTheConsole();
    void aFailureOnAWorkerDoesNotKeepItsThreadFromEnding();
};

void GuardTest::workThatSucceedsReportsNothing()
{
    bool done = false;
    QVERIFY(runGuarded([&done] { done = true; }).empty());
    QVERIFY(done);
}

void GuardTest::aStandardExceptionIsReportedAsFatal()
{
    const std::vector<Report> reports = runGuarded([] { throw std::runtime_error("no space"); });
    QCOMPARE(reports.size(), std::size_t(1));
    QCOMPARE(reports[0].message, std::string("Processing aborted [no space]"));
    QCOMPARE(reports[0].label, std::string("Orvex::Fatal"));
    QCOMPARE(reports[0].function, std::string("onSample"));
    QCOMPARE(reports[0].file, std::string("src/lib/Board/Sample"));
    QCOMPARE(reports[0].line, 77UL);
}

void GuardTest::aThrownIntegerIsReportedAsStrange()
{
    const std::vector<Report> reports = runGuarded([] { throw 3; });
    QCOMPARE(reports.size(), std::size_t(1));
    QCOMPARE(reports[0].message, std::string("Processing aborted [something strange...]"));
    QCOMPARE(reports[0].label, std::string("Orvex::Fatal"));
    QCOMPARE(reports[0].function, std::string("onSample"));
    QCOMPARE(reports[0].file, std::string("src/lib/Board/Sample"));
    QCOMPARE(reports[0].line, 77UL);
}

void GuardTest::anOwnFailurePassesUnchanged()
{
    std::list<std::string> details;
    guard(
        "onSample", "src/lib/Board/Sample", 77,
        [] {
            raise(Fatal("Empty result").with("command", std::string("board list")),
                  "executeCommand", "src/lib/Board/KSBaseHandler", 212);
        },
        [&details](const Exception& failure) { details = failure.getDetailValues(); });
    QCOMPARE(details, std::list<std::string>{"board list"});

    const std::vector<Report> reports = runGuarded(
        [] { raise(Fatal("Empty result"), "executeCommand", "src/lib/Board/KSBaseHandler", 212); });
    QCOMPARE(reports.size(), std::size_t(1));
    QCOMPARE(reports[0].message, std::string("Empty result"));
    QCOMPARE(reports[0].function, std::string("executeCommand"));
    QCOMPARE(reports[0].file, std::string("src/lib/Board/KSBaseHandler"));
    QCOMPARE(reports[0].line, 212UL);
}

void GuardTest::theRootOfTheFamilyPassesUnchanged()
{
    const std::vector<Report> reports = runGuarded([] { throw Exception("Plain"); });
    QCOMPARE(reports.size(), std::size_t(1));
    QCOMPARE(reports[0].message, std::string("Plain"));
    QCOMPARE(reports[0].label, std::string("Orvex::Exception"));
}

void GuardTest::theClassOfAFailureStays()
{
    const std::vector<Report> reports =
        runGuarded([] { raise(FactoryFailed("Empty name"), "preCreate", "file", 1); });
    QCOMPARE(reports.size(), std::size_t(1));
    QCOMPARE(reports[0].label, std::string("Orvex::FactoryFailed"));
    QCOMPARE(reports[0].function, std::string("preCreate"));
}

void GuardTest::executionGoesOnAfterTheGuard()
{
    bool wentOn = false;
    try {
        runGuarded([] { throw 3; });
        wentOn = true;
    } catch (...) {
    }
    QVERIFY(wentOn);
}

void GuardTest::theStateStaysAsTheFailureLeftIt()
{
    int state = 0;
    runGuarded([&state] {
        state = 1;
        throw std::runtime_error("lost");
    });
    QCOMPARE(state, 1);
}

void GuardTest::workThatCannotBeCopiedIsRun()
{
    int seen = 0;
    guard(
        "onSample", "file", 1, [value = std::make_unique<int>(4), &seen] { seen = *value; },
        [](const Exception&) {});
    QCOMPARE(seen, 4);
}

void GuardTest::aFailureIsOneErrorOfTheConsole_data()
{
    QTest::addColumn<int>("failure");
    QTest::addColumn<QString>("text");
    QTest::newRow("standard exception")
        << 0 << "Processing aborted [lost] [onSample, src/lib/Board/Sample:77]";
    QTest::newRow("integer")
        << 1 << "Processing aborted [something strange...] [onSample, src/lib/Board/Sample:77]";
    QTest::newRow("own failure") << 2 << "Empty name [preCreate, src/lib/Board/Tamsa:5]";
}

void GuardTest::aFailureIsOneErrorOfTheConsole()
{
    QFETCH(int, failure);
    QFETCH(QString, text);
    Console sink;
    guard(
        "onSample", "src/lib/Board/Sample", 77,
        [failure] {
            switch (failure) {
            case 0:
                throw std::runtime_error("lost");
            case 1:
                throw 1;
            default:
                raise(FactoryFailed("Empty name"), "preCreate", "src/lib/Board/Tamsa", 5);
            }
        },
        [&sink](const Exception& thrown) { sink.error(thrown); });
    const std::deque<Message> messages = sink.getRecentMessages();
    QCOMPARE(messages.size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(messages[0].text), text);
    QVERIFY(messages[0].level == Level::Error);
}

void GuardTest::aFailureOnAWorkerDoesNotKeepItsThreadFromEnding()
{
    Console sink;
    QSignalSpy added(&sink, &Console::messageAdded);
    FailingWorker worker(sink);
    bool hasFinished = false;
    connect(&worker, &QThread::finished, this, [&hasFinished] { hasFinished = true; });
    worker.start();
    QTRY_VERIFY(hasFinished);
    worker.wait();
    QTRY_COMPARE(added.count(), 1);
    const std::deque<Message> messages = sink.getRecentMessages();
    QCOMPARE(messages[0].text,
             std::string("Processing aborted [lost] [launch, src/lib/Board/Scheduler:5]"));
    QVERIFY(messages[0].level == Level::Normal);
}

QTEST_GUILESS_MAIN(GuardTest)
#include "tst_guard.moc"
