// The transcript cannot be written any more.

#include "app/TranscriptWatch.h"

#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>

#include <QFile>

#include <csignal>
#include <sys/resource.h>

using Kestoboard::TranscriptWatch;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::Panel;

namespace
{

/// No file of this process grows beyond a size, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(qint64 bytes)
        : formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &formerLimit);
        rlimit limit = formerLimit;
        limit.rlim_cur = static_cast<rlim_t>(bytes);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &formerLimit);
        std::signal(SIGXFSZ, formerHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*const formerHandler)(int);
    rlimit formerLimit{};
};

} // namespace

class TestTranscriptWatch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aTranscriptThatGrowsIsNotSpokenOf();
    void aFullDiskIsToldOnceAndNothingIsLost();
    void aTranscriptThatHasGoneIsTold();

private:
    void send(const std::string& command) const { panel->run(Test::CommandType::Control, command); }

    QScopedPointer<Bench> bench;
    QScopedPointer<Panel> panel;
    QScopedPointer<TranscriptWatch> watch;
};

void TestTranscriptWatch::init()
{
    bench.reset(new Bench);
    panel.reset(new Panel);
    watch.reset(new TranscriptWatch(panel->getEngine(), nullptr));
}

void TestTranscriptWatch::cleanup()
{
    watch.reset();
    panel.reset();
    bench.reset();
}

void TestTranscriptWatch::aTranscriptThatGrowsIsNotSpokenOf()
{
    const ConsoleRecorder recorder;
    for (int count = 0; count < 3; ++count) {
        send("board list");
    }
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestTranscriptWatch::aFullDiskIsToldOnceAndNothingIsLost()
{
    ConsoleRecorder recorder;
    {
        const FullDisk disk(bench->readFile("ksbase.log").size());
        send("first while full");
        send("second while full");
    }
    const QStringList lines = recorder.takeLines();
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().startsWith("W: The transcript " + bench->getPath("ksbase.log")) &&
                 lines.first().contains("make room"),
             qPrintable(lines.first()));
    send("after room was made");
    const QByteArray transcript = bench->readFile("ksbase.log");
    for (const char* const command :
         {">first while full\n", ">second while full\n", ">after room was made\n"}) {
        QVERIFY2(transcript.contains(command), transcript.constData());
    }
    QCOMPARE(recorder.getLines(), QStringList());
}

void TestTranscriptWatch::aTranscriptThatHasGoneIsTold()
{
    const ConsoleRecorder recorder;
    QVERIFY(QFile::remove("ksbase.log"));
    send("board list");
    QCOMPARE(recorder.getLines().size(), 1);
    QVERIFY2(recorder.getLines().first().contains("has gone"),
             qPrintable(recorder.getLines().first()));
}

KESTOBOARD_TEST_MAIN(TestTranscriptWatch)
#include "tst_transcript_watch.moc"
