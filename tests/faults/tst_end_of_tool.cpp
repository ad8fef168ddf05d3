// The end of the tool at random moments under load: the panel tells its last words and ends with
// status 1, every time.

#include "support/Bench.h"
#include "support/RunSize.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <random>
#include <unistd.h>

using Test::Bench;

namespace
{

/// A panel that takes longer hangs.
const int hangGuard = 60'000;

const QByteArray farewell = "E: ksbase2 process has finished. This should not happen\n";

/// When and how the tool ends; see tool_relay.
struct Moment {
    unsigned seed;
    unsigned command;
    unsigned bytes;
    unsigned delay;
    int signal;
    unsigned time;

    QByteArray toArguments() const
    {
        QByteArray text;
        for (const long number :
             {long(seed), long(command), long(bytes), long(delay), long(signal), long(time)}) {
            text += ' ' + QByteArray::number(qlonglong(number));
        }
        return text;
    }
};

/// The descendants of a process that is started with its write end: they hold it open.
class Family
{
public:
    Family()
    {
        if (::pipe(ends) != 0) {
            qFatal("no pipe");
        }
        ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    }
    ~Family()
    {
        ::close(ends[0]);
        leave();
    }
    Family(const Family&) = delete;
    Family& operator=(const Family&) = delete;

    /// To be called once the first of them has been started.
    void leave()
    {
        if (ends[1] >= 0) {
            ::close(ends[1]);
            ends[1] = -1;
        }
    }
    /// Waits until none of them is left. False when one stays.
    bool waitForEnd() const
    {
        pollfd request{ends[0], POLLIN, 0};
        return ::poll(&request, 1, hangGuard) > 0;
    }

private:
    int ends[2];
};

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the tool has written, between what it had certainly written and what it had begun to.
struct Record {
    QByteArray begun;
    QByteArray done;

    bool holds(const QByteArray& bytes) const
    {
        return begun.startsWith(bytes) && bytes.size() >= done.size();
    }
};

/// The two sides of a transcript.
struct Transcript {
    QByteArray commands; ///< a line each
    QByteArray replies;

    explicit Transcript(const QByteArray& text)
    {
        for (const QByteArray& line : text.split('\n')) {
            if (line.startsWith('>')) {
                commands += line.mid(1) + '\n';
            } else {
                replies += line + '\n';
            }
        }
        // What follows the last line feed is no line.
        if (text.endsWith('\n') || !text.mid(text.lastIndexOf('\n') + 1).startsWith('>')) {
            replies.chop(1);
        }
    }
};

} // namespace

class TestEndOfTool : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void theProcessEndsInOrderAtEveryMoment();

private:
    Moment chooseMoment();
    QString play(const Moment& moment);
    QString judge(QProcess* panel);
    QString judgeLastWords(const QByteArray& said);
    QString getPanelDirectory() const;
    QProcessEnvironment getPanelEnvironment() const;
    Record getRecord(const QString& name) const;

    std::unique_ptr<Bench> bench;
    std::unique_ptr<QTemporaryDir> records;
    std::mt19937 random;
    int endedInReply = 0;
    int endedUnasked = 0;
};

Moment TestEndOfTool::chooseMoment()
{
    const int endings[] = {SIGKILL, SIGKILL, SIGTERM, SIGSEGV, SIGABRT, 0};
    Moment moment{};
    moment.seed = random() % 1'000'000;
    moment.signal = endings[random() % 6];
    moment.command = 1 + random() % 120;
    // Before the reply, after the whole of it, or anywhere inside.
    const unsigned place = random() % 4;
    moment.bytes = place == 0 ? 0 : place == 1 ? 1'000'000 : 1 + random() % 60;
    moment.delay = random() % 2 == 0 ? 0 : random() % 3000;
    if (random() % 4 == 0) {
        moment.command = 0;
        moment.time = 1 + random() % 400'000;
    }
    return moment;
}

void TestEndOfTool::theProcessEndsInOrderAtEveryMoment()
{
    const int count = getRunSize(16, 1000);
    unsigned seed = std::random_device()();
    if (qEnvironmentVariableIsSet("KESTOBOARD_SEED")) {
        seed = qEnvironmentVariable("KESTOBOARD_SEED").toUInt();
    }
    random.seed(seed);
    qInfo("%d ends, KESTOBOARD_SEED=%u", count, seed);
    QElapsedTimer clock;
    clock.start();
    for (int number = 0; number < count; ++number) {
        const Moment moment = chooseMoment();
        const QString complaint = play(moment);
        if (!complaint.isEmpty()) {
            // The whole of it: a message of a check is cut.
            qWarning().noquote() << complaint;
        }
        QVERIFY2(complaint.isEmpty(),
                 "end " + QByteArray::number(number) + " at the moment" + moment.toArguments());
    }
    qInfo("%d ends in %.0f s: %d inside a reply, %d between commands", count,
          double(clock.elapsed()) / 1000, endedInReply, endedUnasked);
}

void TestEndOfTool::cleanup()
{
    bench.reset();
    records.reset();
}

/// Lets a panel live until that moment and returns what was wrong with its end.
QString TestEndOfTool::play(const Moment& moment)
{
    // The one before gives the working directory back, so it has to go first.
    bench.reset();
    bench = std::make_unique<Bench>();
    records = std::make_unique<QTemporaryDir>();
    bench->setScenario(Bench::board(QStringLiteral("KS-Dev A"), QStringLiteral("selected = true")) +
                       Bench::board(QStringLiteral("KS-Dev B")));
    bench->setTool("#!/bin/sh\nexec '" KESTOBOARD_TOOL_RELAY "' '" +
                   QFile::encodeName(Bench::getToolDirectory()) + "/ksbase2_cli' '" +
                   QFile::encodeName(records->path()) + "'" + moment.toArguments() + "\n");
    Family family;
    QProcess panel;
    panel.setProcessEnvironment(getPanelEnvironment());
    panel.start(QStringLiteral(KESTOBOARD_LOAD_ACTOR), {QString::number(moment.seed)});
    const bool hasEnded = panel.waitForFinished(hangGuard);
    family.leave();
    if (!hasEnded) {
        const QByteArray said = panel.readAllStandardOutput() + panel.readAllStandardError();
        panel.kill();
        panel.waitForFinished();
        return QStringLiteral("The panel hangs. It said:\n") + QString::fromUtf8(said);
    }
    if (!family.waitForEnd()) {
        return QStringLiteral("A process was left behind");
    }
    if (!QDir(getPanelDirectory()).isEmpty()) {
        return QStringLiteral("A file was left behind");
    }
    return judge(&panel);
}

QString TestEndOfTool::getPanelDirectory() const
{
    return records->filePath(QStringLiteral("tmp"));
}

/// With places of its own for what is to go with the panel.
QProcessEnvironment TestEndOfTool::getPanelEnvironment() const
{
    QDir().mkdir(getPanelDirectory());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), getPanelDirectory());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), records->path());
    return environment;
}

Record TestEndOfTool::getRecord(const QString& name) const
{
    const QString path = records->filePath(name);
    return {read(path + QStringLiteral(".begun")), read(path + QStringLiteral(".done"))};
}

QString TestEndOfTool::judge(QProcess* panel)
{
    const QByteArray said = panel->readAllStandardOutput();
    QString complaint;
    if (panel->exitStatus() != QProcess::NormalExit || panel->exitCode() != 1) {
        complaint = QStringLiteral("It ended with %1 %2")
                        .arg(panel->exitStatus() == QProcess::NormalExit ? "status" : "signal")
                        .arg(panel->exitCode());
    } else if (said.count(farewell) != 1) {
        complaint = QStringLiteral("It said %1 times farewell").arg(said.count(farewell));
    } else {
        complaint = judgeLastWords(said.mid(said.indexOf(farewell) + farewell.size()));
    }
    if (complaint.isEmpty()) {
        return {};
    }
    return complaint + QStringLiteral(". It said:\n") +
           QString::fromUtf8(said + panel->readAllStandardError());
}

/// The last words are the standard output, whole: of the standard error nothing is left for them.
/// The transcript has all that the tool has written there, and every command that it has read.
QString TestEndOfTool::judgeLastWords(const QByteArray& said)
{
    const Record errors = getRecord(QStringLiteral("errors"));
    const Record output = getRecord(QStringLiteral("output"));
    const Transcript transcript(bench->readFile(QStringLiteral("ksbase.log")));
    const QByteArray head = ">ksbase2_cli -s -x\n";
    const QByteArray received = head + read(records->filePath(QStringLiteral("received")));

    const int outputStart = said.indexOf("received 1\n");
    const QByteArray words = said.left(outputStart < 0 ? said.size() - 1 : outputStart);
    const QByteArray outputWords = said.mid(words.size());
    if (!words.endsWith('\n') || !outputWords.endsWith('\n')) {
        return QStringLiteral("The last words end without their lines");
    }
    if (!output.holds(outputWords.chopped(1))) {
        return QStringLiteral("The standard output is not told as it was");
    }
    if (!errors.holds(transcript.replies) || words.size() > 1) {
        return QStringLiteral("Of standard error %1 bytes were written, %2 perhaps, and told %3: ")
                   .arg(errors.done.size())
                   .arg(errors.begun.size())
                   .arg(words.size() - 1) +
               QString::fromUtf8(words) +
               QStringLiteral("The transcript has %1:\n").arg(transcript.replies.size()) +
               QString::fromUtf8(transcript.replies);
    }
    const int surplus = transcript.commands.mid(received.size()).count('\n');
    if (!transcript.commands.startsWith(received) || surplus > 1) {
        return QStringLiteral("The tool has read other commands than were written");
    }
    endedInReply += transcript.replies.isEmpty() || transcript.replies.endsWith('\n') ? 0 : 1;
    endedUnasked += surplus == 0 && transcript.replies.endsWith("ED\n") ? 1 : 0;
    return {};
}

QTEST_GUILESS_MAIN(TestEndOfTool)
#include "tst_end_of_tool.moc"
