// The window that stays when the board tool has ended, on a display: it is a process of its own.

#include "Program.h"
#include "support/Bench.h"
#include "support/Server.h"
#include "support/TestMain.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QMap>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <sys/prctl.h>
#include <sys/wait.h>

using Test::Bench;
using Test::Program;

namespace
{

/// With this the panel has asked for all that its first page shows.
const char lastQuestion[] = "board get force_bit";
const char killed[] = "kind = \"kill\"\nsignal = 9\n";
const int alive = -1;

int countChildren()
{
    int count = 0;
    for (const QString& task :
         QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children("/proc/self/task/" + task + "/children");
        if (children.open(QIODevice::ReadOnly)) {
            count += QString(children.readAll()).split(' ', Qt::SkipEmptyParts).size();
        }
    }
    return count;
}

} // namespace

class TestLastWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void itTellsHowThePanelEnded_data();
    void itTellsHowThePanelEnded();
    void itsWordsGoToTheClipboardOfTheDesktop();
    void thePanelIsStartedAgainAsItWasStarted();
    void thePanelIsStartedAgainWhereItWorked();
    void closedItStartsNothing();

private:
    /// Runs the panel until its tool ends, and with it the panel, and the window has been read.
    void runUntilTheToolEnds(const QString& end, const QStringList& arguments = {});
    /// The processes that have opened the display with such arguments, without the first panel.
    QList<pid_t> getProcesses(const QString& arguments) const;
    QString readDiary(const QString& name) const;
    void writeDiary(const QString& name) const;
    /// The status with which a process has ended, whatever ended it; `alive` if nothing has.
    int getStatus(pid_t process);

    QScopedPointer<Bench> bench;
    QScopedPointer<Program> program;
    QScopedPointer<QTemporaryDir> diary;
    qint64 firstPanel = 0;
    QMap<pid_t, int> statuses;
};

void TestLastWindow::initTestCase()
{
    // What outlives the panel becomes a child of this process.
    QCOMPARE(prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0), 0);
}

void TestLastWindow::init()
{
    bench.reset(new Bench);
    QDir().mkdir("lab");
    diary.reset(new QTemporaryDir);
    program.reset(new Program);
    program->setVariable("QT_QPA_PLATFORM", "xcb");
    program->setVariable("DISPLAY", qEnvironmentVariable("DISPLAY"));
    program->setVariable("QT_PLUGIN_PATH", KESTOBOARD_TEST_PLUGINS);
    program->setVariable("QT_QPA_GENERIC_PLUGINS", "window_reader");
    program->setVariable("KESTOBOARD_TEST_DIARY", diary->path());
}

void TestLastWindow::cleanup()
{
    for (const pid_t process : getProcesses("*")) {
        if (getStatus(process) == alive) {
            ::kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
    }
    statuses.clear();
    program.reset();
    diary.reset();
    bench.reset();
}

void TestLastWindow::runUntilTheToolEnds(const QString& end, const QStringList& arguments)
{
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") +
                       Bench::fault(lastQuestion, end));
    program->start(arguments);
    firstPanel = program->getId();
    QVERIFY(program->waitForEnd());
    QVERIFY2(program->getStatus() == 1, qPrintable(program->getErrors()));
    QTRY_VERIFY(QFile::exists(diary->filePath("read")));
}

QList<pid_t> TestLastWindow::getProcesses(const QString& arguments) const
{
    const QString prefix("process-");
    QList<pid_t> processes;
    for (const QString& name : QDir(diary->path()).entryList({prefix + '*'}, QDir::Files)) {
        const pid_t process = name.mid(prefix.size()).toInt();
        if (process != firstPanel && (arguments == "*" || readDiary(name) == arguments)) {
            processes += process;
        }
    }
    return processes;
}

QString TestLastWindow::readDiary(const QString& name) const
{
    QFile file(diary->filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void TestLastWindow::writeDiary(const QString& name) const
{
    QFile file(diary->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

int TestLastWindow::getStatus(pid_t process)
{
    int status = 0;
    if (!statuses.contains(process) && waitpid(process, &status, WNOHANG) == process) {
        statuses[process] = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return statuses.value(process, alive);
}

void TestLastWindow::itTellsHowThePanelEnded_data()
{
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a signal") << killed << "The board tool was ended by the signal 9.";
    QTest::newRow("a status") << "kind = \"exit\"\nstatus = 3\ntext = \"no licence\"\n"
                              << "The board tool ended with the status 3.";
}

void TestLastWindow::itTellsHowThePanelEnded()
{
    QFETCH(QString, end);
    QFETCH(QString, sentence);
    runUntilTheToolEnds(end, {"--directory", "lab"});
    const QString words = readDiary("read");
    for (const QString& part :
         {QString("Kestoboard has ended\n"), QString("The board tool has ended, and the panel"),
          QString("  Connected KS-Dev A\n"),
          QString("ksbase2 process has finished. This should not happen\n"), sentence,
          bench->getPath("lab/ksbase.log")}) {
        QVERIFY2(words.contains(part), qPrintable(part + "\nis not in\n" + words));
    }
    // The terminal is told the same.
    QVERIFY2(program->getErrors().contains(sentence), qPrintable(program->getErrors()));
}

void TestLastWindow::itsWordsGoToTheClipboardOfTheDesktop()
{
    runUntilTheToolEnds(killed);
    const QString expected = program->getErrors();
    // From process to process, over the display.
    QTRY_VERIFY(QApplication::clipboard()->text().contains("The board tool was ended"));
    const QString text = QApplication::clipboard()->text();
    QVERIFY2(expected.endsWith(text), qPrintable(expected + "\ndoes not end with\n" + text));
    QVERIFY(text.contains(bench->getPath("ksbase.log")));
}

void TestLastWindow::thePanelIsStartedAgainAsItWasStarted()
{
    runUntilTheToolEnds(killed, {"--directory", "lab"});
    // The next tool does not end.
    bench->setScenario(Bench::board("KS-Dev B", "selected = true"));
    const int before = bench->count(lastQuestion);
    const QList<pid_t> windows = getProcesses("--show-last-words --directory lab");
    QCOMPARE(windows.size(), 1);
    QCOMPARE(getStatus(windows.first()), alive);

    writeDiary("again");
    QTRY_COMPARE(getStatus(windows.first()), 0);
    QTRY_COMPARE(getProcesses("--directory lab").size(), 1);
    QTRY_COMPARE(bench->count(lastQuestion), before + 1);
    const QByteArray transcript = bench->readFile("lab/ksbase.log");
    QVERIFY2(transcript.contains("KS-Dev B") && !transcript.contains("KS-Dev A"), transcript);

    const QStringList kept = QDir("lab").entryList({"ksbase-*.log"});
    QCOMPARE(kept.size(), 1);
    QVERIFY(bench->readFile("lab/" + kept.first()).contains("KS-Dev A"));
    QVERIFY2(readDiary("read").contains("This one is kept beside it as " + kept.first() + ".\n"),
             qPrintable(readDiary("read")));

    const pid_t panel = getProcesses("--directory lab").first();
    QCOMPARE(getStatus(panel), alive);
    ::kill(panel, SIGTERM);
    QTRY_COMPARE(getStatus(panel), 0);
}

void TestLastWindow::thePanelIsStartedAgainWhereItWorked()
{
    QDir().mkdir("elsewhere");
    QLockFile lock("lab/.kestoboard.lock");
    QVERIFY(lock.tryLock());
    runUntilTheToolEnds(killed, {"--directory", "lab"});
    QVERIFY(QFile::exists("elsewhere/ksbase.log"));
    bench->setScenario(Bench::board("KS-Dev B", "selected = true"));
    const int before = bench->count(lastQuestion);
    writeDiary("again");
    const QString arguments = "--directory lab --directory " + bench->getPath("elsewhere");
    QTRY_COMPARE(getProcesses(arguments).size(), 1);
    QTRY_COMPARE(bench->count(lastQuestion), before + 1);
    QTRY_VERIFY(bench->readFile("elsewhere/ksbase.log").contains("KS-Dev B"));
    QCOMPARE(QDir("elsewhere").entryList({"ksbase-*.log"}).size(), 1);
    QVERIFY(!QFile::exists("lab/ksbase.log"));

    const pid_t panel = getProcesses(arguments).first();
    ::kill(panel, SIGTERM);
    QTRY_COMPARE(getStatus(panel), 0);
}

void TestLastWindow::closedItStartsNothing()
{
    // Beside the display perhaps a tool that outlived its panel in another test.
    const int before = countChildren();
    runUntilTheToolEnds(killed);
    const QList<pid_t> windows = getProcesses("--show-last-words");
    QCOMPARE(windows.size(), 1);
    writeDiary("close");
    QTRY_COMPARE(getStatus(windows.first()), 0);
    // What it had started would be a child of this process by now.
    QCOMPARE(countChildren(), before);
}

int main(int argc, char** argv)
{
    // It looks for a free number itself.
    const Test::Server display({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24",
                                "-nolisten", "tcp", "-noreset"});
    if (display.getPlace().isEmpty()) {
        std::fputs("Xvfb cannot be started: install it.\n", stderr);
        return EXIT_FAILURE;
    }
    const QTemporaryDir runtimeDirectory;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeDirectory.path()));
    qputenv("DISPLAY", ':' + display.getPlace());
    qputenv("QT_QPA_PLATFORM", "xcb");
    Test::TestApplication application(argc, argv);
    TestLastWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_last_window.moc"
