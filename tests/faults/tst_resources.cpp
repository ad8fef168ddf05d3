#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/Shortage.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <application/FileSystemBrowser.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QTreeView>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <dlfcn.h>
#include <memory>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

using Board::CommandHandler;
using Test::Bench;
using Test::CommandType;

namespace
{

const char command[] = "board get mode";
const char transcript[] = "ksbase.log";
const QString noMeans = "E: No command can be sent: the system gives no thread for it. It is tried "
                        "again every second";

/// While it is set, no thread can be started.
bool hasNoThreads = false;

/// The disk that is full and the file on it, by their numbers; no file while it is 0. Every thread
/// writes.
std::atomic<dev_t> fullDisk{0};
std::atomic<ino_t> fileOnFullDisk{0};
/// How many bytes that disk takes before it is full.
std::atomic<std::size_t> roomOnDisk{0};

bool isOnFullDisk(int descriptor)
{
    struct stat status {
    };
    return fileOnFullDisk != 0 && fstat(descriptor, &status) == 0 && status.st_dev == fullDisk &&
           status.st_ino == fileOnFullDisk;
}

/// The disk of a file is full, but for some bytes, as long as this lives.
class FullDisk
{
public:
    FullDisk(const char* path, std::size_t room)
    {
        struct stat status {
        };
        stat(path, &status);
        roomOnDisk = room;
        fullDisk = status.st_dev;
        fileOnFullDisk = status.st_ino;
    }
    ~FullDisk() { fileOnFullDisk = 0; }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
};

/// Counts what is done in posted calls to objects of no class of their own.
class CallCounter : public QObject
{
public:
    int calls = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool isPlain = watched->metaObject() == &QObject::staticMetaObject;
        calls += isPlain && event->type() == QEvent::MetaCall ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

// In place of the C library's, which come after the program.
extern "C" __attribute__((visibility("default"))) int
pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
               void* argument) noexcept
{
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    return hasNoThreads ? EAGAIN : create(thread, attributes, start, argument);
}

extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes,
                                                                std::size_t size)
{
    using Write = ssize_t (*)(int, const void*, std::size_t);
    static const auto writeBytes = reinterpret_cast<Write>(dlsym(RTLD_NEXT, "write"));
    if (!isOnFullDisk(descriptor)) {
        return writeBytes(descriptor, bytes, size);
    }
    if (roomOnDisk == 0) {
        errno = ENOSPC;
        return -1;
    }
    const ssize_t written = writeBytes(descriptor, bytes, std::min(size, roomOnDisk.load()));
    roomOnDisk -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    return written;
}

/// What the engine and the browser do when the disk or the file descriptors run out: they go on,
/// invent nothing, and lose no reply.
class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void whatAFullDiskHoldsBackIsWrittenLater_data();
    void whatAFullDiskHoldsBackIsWrittenLater();
    void aFullDiskLeavesALongReplyWhole();
    void aCommandNeedsNoDescriptor();
    void aCommandWaitsUntilThereIsAThread();
    void manyCommandsWaitInTheOrderOfTheQueue();
    void anAttemptThatFailedLeavesNothingToBeDone();
    void theEngineEndsWhileACommandWaitsForAThread();
    void aDirectoryThatCannotBeOpenedIsNotShownAsEmpty();

private:
    std::unique_ptr<Bench> bench;
};

void TestResources::initTestCase()
{
    // A program that meets the largest size of a file is ended unless it asks for the error.
    std::signal(SIGXFSZ, SIG_IGN);
}

void TestResources::init()
{
    bench = std::make_unique<Bench>();
    bench->setScenario(Bench::board("Aurora"));
}

void TestResources::cleanup()
{
    hasNoThreads = false;
    bench.reset();
}

void TestResources::whatAFullDiskHoldsBackIsWrittenLater_data()
{
    QTest::addColumn<int>("room");
    QTest::newRow("no room") << 0;
    QTest::newRow("room for a byte") << 1;
    QTest::newRow("room within a command") << 7;
    QTest::newRow("room within an answer") << 20;
    // Of one exchange, of which each is 44 bytes long, and a bit.
    QTest::newRow("room within the second exchange") << 50;
    QTest::newRow("no file may grow") << -1;
}

void TestResources::whatAFullDiskHoldsBackIsWrittenLater()
{
    QFETCH(int, room);
    const QByteArray exchange = ">board get mode\nJtag only\nCOMMAND SUCCEEDED\n";
    const Test::Panel panel;
    const QByteArray before = bench->readFile(transcript);
    std::unique_ptr<FullDisk> disk;
    std::unique_ptr<Test::Limit> limit;
    if (room >= 0) {
        disk = std::make_unique<FullDisk>(transcript, static_cast<std::size_t>(room));
    } else {
        limit = std::make_unique<Test::Limit>(RLIMIT_FSIZE, static_cast<rlim_t>(before.size()));
    }
    std::string replies = panel.run(CommandType::Control, command);
    replies += panel.run(CommandType::Control, command);
    QCOMPARE(replies, std::string("Jtag only\nCOMMAND SUCCEEDED\nJtag only\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(bench->readFile(transcript), before + (exchange + exchange).left(qMax(room, 0)));

    disk.reset();
    limit.reset();
    panel.run(CommandType::Control, command);
    QCOMPARE(bench->readFile(transcript), before + exchange + exchange + exchange);
}

void TestResources::aFullDiskLeavesALongReplyWhole()
{
    const int size = 200'000;
    bench->setScenario(Bench::board("Aurora") +
                       Bench::fault("help", QString("kind = \"large\"\nbytes = %1\n").arg(size)));
    const Test::Panel panel;
    const QByteArray before = bench->readFile(transcript);
    std::string reply;
    {
        const Test::Limit full(RLIMIT_FSIZE, static_cast<rlim_t>(before.size()));
        reply = panel.run(CommandType::Control, "help");
    }
    QVERIFY(reply.size() >= std::string::size_type(size));
    QVERIFY(reply.find("COMMAND SUCCEEDED\n") != std::string::npos);

    // The next command stands in it again, after whatever part of the reply had been kept.
    panel.run(CommandType::Control, "board get force_bit");
    const QByteArray after = bench->readFile(transcript);
    QVERIFY(after.startsWith(before));
    QVERIFY(after.endsWith(">board get force_bit\nForcebit is not set\nCOMMAND SUCCEEDED\n"));
    QVERIFY(after.size() < before.size() + size);
}

void TestResources::aCommandNeedsNoDescriptor()
{
    const Test::Panel panel;
    bench->takeJournal();
    Test::ConsoleRecorder recorder;
    {
        const Test::DescriptorShortage shortage;
        for (int round = 0; round < 10; ++round) {
            QCOMPARE(panel.run(CommandType::Control, command),
                     std::string("Jtag only\nCOMMAND SUCCEEDED\n"));
        }
    }
    QCOMPARE(bench->takeJournal().count(command), 10);
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestResources::aCommandWaitsUntilThereIsAThread()
{
    const Test::Panel panel;
    bench->takeJournal();
    Test::ConsoleRecorder recorder;
    hasNoThreads = true;
    CommandHandler* const handler =
        CommandHandler::create(CommandType::Control, command, panel.getEngine());
    QTRY_COMPARE(recorder.getLines(), QStringList(noMeans));
    // However often it is tried, it is said once.
    panel.getEngine()->startThread();
    panel.getEngine()->startThread();
    QCOMPARE(bench->takeJournal(), QStringList());
    QVERIFY(!handler->isRunning());
    hasNoThreads = false;
    Board::waitCommandHandlerReady(handler);
    QCOMPARE(handler->getResult(), std::string("Jtag only\nCOMMAND SUCCEEDED\n"));
    handler->destroy();
    QCOMPARE(bench->takeJournal(), QStringList(command));
    QCOMPARE(recorder.getLines(), QStringList(noMeans));
}

void TestResources::manyCommandsWaitInTheOrderOfTheQueue()
{
    const Test::Panel panel;
    bench->takeJournal();
    std::vector<CommandHandler*> handlers;
    hasNoThreads = true;
    for (const auto& wanted : {std::pair(CommandType::Monitor, "board monitor get 0"),
                               std::pair(CommandType::Refresh, "board list"),
                               std::pair(CommandType::Control, "board get mode"),
                               std::pair(CommandType::Control, "board get force_bit")}) {
        handlers.push_back(CommandHandler::create(wanted.first, wanted.second, panel.getEngine()));
    }
    QCoreApplication::processEvents();
    hasNoThreads = false;
    // The last one of the queue is answered last.
    Board::waitCommandHandlerReady(handlers.front());
    for (CommandHandler* const handler : handlers) {
        QVERIFY(handler->hasFinished());
        handler->destroy();
    }
    QCOMPARE(bench->takeJournal(), QStringList({"board get mode", "board get force_bit",
                                                "board list", "board monitor get 0"}));
}

void TestResources::anAttemptThatFailedLeavesNothingToBeDone()
{
    const Test::Panel panel;
    bench->takeJournal();
    CallCounter counter;
    QCoreApplication::instance()->installEventFilter(&counter);
    hasNoThreads = true;
    CommandHandler* const handler =
        CommandHandler::create(CommandType::Control, command, panel.getEngine());
    QCoreApplication::processEvents();
    QCOMPARE(counter.calls, 0);
    // The one that works leaves something, and it is seen.
    hasNoThreads = false;
    panel.getEngine()->startThread();
    Board::waitCommandHandlerReady(handler);
    QVERIFY(counter.calls > 0);
    handler->destroy();
    QCOMPARE(bench->takeJournal(), QStringList(command));
}

void TestResources::theEngineEndsWhileACommandWaitsForAThread()
{
    auto panel = std::make_unique<Test::Panel>();
    bench->takeJournal();
    hasNoThreads = true;
    CommandHandler* const handler =
        CommandHandler::create(CommandType::Control, command, panel->getEngine());
    panel.reset();
    QVERIFY(!handler->hasFinished());
    handler->destroy();
    QCOMPARE(bench->takeJournal(), QStringList());
}

void TestResources::aDirectoryThatCannotBeOpenedIsNotShownAsEmpty()
{
    bench->writeFile("design.ksb", "content");
    QVERIFY(QDir::current().mkdir("designs"));
    bench->writeFile("designs/inner.ksb", "content");
    Zandu::FileSystemBrowser browser(QDir::currentPath(), QDir::AllDirs | QDir::Files, {"*.ksb"},
                                     nullptr);
    browser.show();
    const auto isSaid = [&browser](const QString& sentence) {
        const QList<QLabel*> labels = browser.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&sentence](const QLabel* label) {
            return label->isVisible() && label->text().contains(sentence);
        });
    };
    const QString directory = QFileInfo("designs").absoluteFilePath();
    // What is shown first has been read, and its thread is up.
    QTRY_COMPARE(browser.findChild<QTreeView*>()->model()->rowCount(), 2);
    {
        // Less than reading takes, but what a sanitizer opens to look at an object.
        const Test::DescriptorShortage shortage(2);
        browser.open(directory);
        QTRY_VERIFY(isSaid("cannot be read now: the system allows no more open files"));
        QVERIFY(!isSaid("Here is no directory"));
    }
    browser.open(directory);
    QTRY_COMPARE(browser.getPath(), directory);
}

KESTOBOARD_TEST_MAIN(TestResources)

#include "tst_resources.moc"
