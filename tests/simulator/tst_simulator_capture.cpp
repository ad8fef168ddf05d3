#include "SimulatedTool.h"

#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

namespace
{

QByteArray refused(const QByteArray& reason)
{
    return "Error: " + reason + "\nCOMMAND FAILED\n";
}

// What a reader of the format finds in a file; `problem` is empty for a file without a flaw.
struct Dump {
    QString problem;
    QMap<QString, int> widths;              // by code
    QMap<QString, QString> codes;           // by name
    QMap<QString, QVector<quint64>> values; // by code, in the order of time
    QVector<quint64> times;
    int valuesBeforeTheFirstTime = 0;
};

bool readDeclaration(const QString& line, Dump& dump)
{
    static const QRegularExpression form(
        QStringLiteral("^\\$var wire (\\d+) ([!-~]+) (\\w+)(?: \\[(\\d+):0\\])? \\$end$"));
    const auto match = form.match(line);
    if (!match.hasMatch()) {
        return false;
    }
    const int width = match.captured(1).toInt();
    if (dump.widths.contains(match.captured(2)) ||
        (width > 1 && match.captured(4).toInt() != width - 1)) {
        dump.problem = QStringLiteral("bad declaration: ") + line;
    }
    dump.widths[match.captured(2)] = width;
    dump.codes[match.captured(3)] = match.captured(2);
    return true;
}

void readChange(const QString& line, Dump& dump)
{
    static const QRegularExpression form(QStringLiteral("^(?:([01])([!-~]+)|b([01]+) ([!-~]+))$"));
    const auto match = form.match(line);
    const bool scalar = !match.captured(1).isEmpty();
    const QString code = match.captured(scalar ? 2 : 4);
    const QString bits = match.captured(scalar ? 1 : 3);
    if (!match.hasMatch() || dump.widths.value(code) != bits.size()) {
        dump.problem = QStringLiteral("bad change: ") + line;
    }
    dump.values[code].append(bits.toULongLong(nullptr, 2));
}

Dump readDump(const QString& path)
{
    Dump dump;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        dump.problem = QStringLiteral("no file");
        return dump;
    }
    bool inBody = false;
    for (const QByteArray& bytes : file.readAll().split('\n')) {
        const QString line = QString::fromLatin1(bytes);
        if (!inBody) {
            readDeclaration(line, dump);
            inBody = line == QLatin1String("$enddefinitions $end");
        } else if (line.startsWith(QLatin1Char('#'))) {
            const quint64 time = line.mid(1).toULongLong();
            if (!dump.times.isEmpty() && time <= dump.times.last()) {
                dump.problem = QStringLiteral("time goes back: ") + line;
            }
            dump.times.append(time);
        } else if (!line.isEmpty() && !line.startsWith(QLatin1Char('$'))) {
            readChange(line, dump);
        }
    }
    return dump;
}

} // namespace

/// The capture: a file that waveform viewers open.
class TestSimulatorCapture : public QObject
{
    Q_OBJECT

private slots:
    void theHeaderIsComplete();
    void theClockHasTheFrequency_data();
    void theClockHasTheFrequency();
    void theCounterFollowsTheClock();
    void theFileShowsTheBitsOfTheBoard();
    void theCounterStandsStillInReset();
    void anOlderFileIsReplaced();
    void aCaptureIsRefused_data();
    void aCaptureIsRefused();
    void aBoardCanRefuseEveryCapture();
    void onlyAnImmediateCaptureDoesNotWaitForItsTrigger();
};

void TestSimulatorCapture::theHeaderIsComplete()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("ksscope capture out.vcd 100E6 immediate=1"),
             QByteArray("Captured 256 periods into out.vcd\nCOMMAND SUCCEEDED\n"));
    QFile file(tool.getPath(QStringLiteral("out.vcd")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    int position = 0;
    for (const char* part :
         {"$date\n", "$end\n", "$version\n", "$end\n", "$comment\n  Sampling clock 100000000 Hz\n",
          "$end\n", "$timescale 1ps $end\n", "$scope module board $end\n", "$var wire 1 ",
          "$upscope $end\n", "$enddefinitions $end\n", "#0\n$dumpvars\n", "$end\n", "#5000\n"}) {
        position = text.indexOf(part, position);
        QVERIFY2(position >= 0, part);
    }
}

void TestSimulatorCapture::theClockHasTheFrequency_data()
{
    QTest::addColumn<QByteArray>("frequency");
    QTest::addColumn<quint64>("second");
    QTest::addColumn<quint64>("last");
    QTest::newRow("1 MHz") << QByteArray("1E6") << quint64(500000) << quint64(256500000);
    QTest::newRow("100 MHz") << QByteArray("100E6") << quint64(5000) << quint64(2565000);
    // Half a period is 500.5 ps: the rounding does not add up.
    QTest::newRow("999 MHz") << QByteArray("999E6") << quint64(501) << quint64(256757);
    QTest::newRow("1 Hz") << QByteArray("1") << quint64(500000000000) << quint64(256500000000000);
    QTest::newRow("lower case") << QByteArray("1.5e6") << quint64(333333) << quint64(171000000);
}

void TestSimulatorCapture::theClockHasTheFrequency()
{
    QFETCH(QByteArray, frequency);
    QFETCH(quint64, second);
    QFETCH(quint64, last);
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("ksscope capture out.vcd " + frequency);
    const Dump dump = readDump(tool.getPath(QStringLiteral("out.vcd")));
    QCOMPARE(dump.problem, QString());
    QCOMPARE(dump.times.first(), quint64(0));
    QCOMPARE(dump.times.at(1), second);
    QCOMPARE(dump.times.last(), last);
    QCOMPARE(dump.values.value(dump.codes.value(QStringLiteral("clk"))).size(), 1 + 2 * 256);
}

void TestSimulatorCapture::theCounterFollowsTheClock()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("ksscope capture out.vcd 1E6");
    const Dump dump = readDump(tool.getPath(QStringLiteral("out.vcd")));
    QCOMPARE(dump.problem, QString());
    QCOMPARE(dump.widths.size(), 5);
    const QVector<quint64> counter = dump.values.value(dump.codes.value(QStringLiteral("counter")));
    const QVector<quint64> gray = dump.values.value(dump.codes.value(QStringLiteral("gray")));
    QCOMPARE(counter.size(), 257);
    QCOMPARE(gray.size(), 257);
    for (int i = 0; i < counter.size(); ++i) {
        QCOMPARE(counter.at(i), quint64(i % 256));
        QCOMPARE(gray.at(i), counter.at(i) ^ (counter.at(i) / 2));
    }
}

void TestSimulatorCapture::theFileShowsTheBitsOfTheBoard()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    const auto capture = [&tool] {
        tool.ask("ksscope capture out.vcd 1E6");
        const Dump dump = readDump(tool.getPath(QStringLiteral("out.vcd")));
        return QVector<quint64>{
            dump.values.value(dump.codes.value(QStringLiteral("reset"))).value(0, 9),
            dump.values.value(dump.codes.value(QStringLiteral("jtag_clock_on"))).value(0, 9)};
    };
    QCOMPARE(capture(), (QVector<quint64>{0, 0}));
    tool.ask("board set jtag_clock on");
    QCOMPARE(capture(), (QVector<quint64>{0, 1}));
    tool.ask("board set reset on");
    QCOMPARE(capture(), (QVector<quint64>{1, 1}));
    tool.ask("board set reset off");
    tool.ask("board set jtag_clock off");
    QCOMPARE(capture(), (QVector<quint64>{0, 0}));
}

void TestSimulatorCapture::theCounterStandsStillInReset()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("board set reset on");
    tool.ask("ksscope capture out.vcd 1E6");
    const Dump dump = readDump(tool.getPath(QStringLiteral("out.vcd")));
    QCOMPARE(dump.problem, QString());
    QCOMPARE(dump.values.value(dump.codes.value(QStringLiteral("counter"))), QVector<quint64>{0});
}

void TestSimulatorCapture::anOlderFileIsReplaced()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("out.vcd"), QByteArray(100000, 'x'));
    tool.setScenario(getOneBoard());
    tool.start();
    tool.ask("ksscope capture out.vcd 1E6");
    QCOMPARE(readDump(tool.getPath(QStringLiteral("out.vcd"))).problem, QString());
}

void TestSimulatorCapture::aCaptureIsRefused_data()
{
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray frequency =
        "The frequency must be a number of hertz from 1 to 1E9, such as 100E6";
    const QByteArray missing = "A capture needs a file and a frequency";
    QTest::newRow("nothing") << QByteArray() << missing;
    QTest::newRow("no frequency") << QByteArray(" out.vcd") << missing;
    QTest::newRow("no number") << QByteArray(" out.vcd fast") << frequency;
    QTest::newRow("a unit") << QByteArray(" out.vcd 100MHz") << frequency;
    QTest::newRow("zero") << QByteArray(" out.vcd 0E6") << frequency;
    QTest::newRow("negative") << QByteArray(" out.vcd -1E6") << frequency;
    QTest::newRow("too high") << QByteArray(" out.vcd 1000.1E6") << frequency;
    QTest::newRow("endless") << QByteArray(" out.vcd inf") << frequency;
    QTest::newRow("no value") << QByteArray(" out.vcd nan") << frequency;
    QTest::newRow("another option") << QByteArray(" out.vcd 1E6 immediate=0")
                                    << QByteArray("The only option of a capture is immediate=1");
    QTest::newRow("a blank in the name") << QByteArray(" my out.vcd 1E6") << frequency;
    QTest::newRow("a blank in the name, immediate")
        << QByteArray(" my out.vcd 1E6 immediate=1")
        << QByteArray("Too many arguments, a file name with blanks cannot be given here");
    QTest::newRow("no such folder")
        << QByteArray(" missing/out.vcd 1E6") << QByteArray("No such file or directory");
    QTest::newRow("a folder") << QByteArray(" / 1E6") << QByteArray("Is a directory");
    QTest::newRow("a full disk") << QByteArray(" /dev/full 1E6")
                                 << QByteArray("No space left on device");
}

void TestSimulatorCapture::aCaptureIsRefused()
{
    QFETCH(QByteArray, arguments);
    QFETCH(QByteArray, reason);
    SimulatedTool tool;
    tool.setScenario(getOneBoard());
    tool.start();
    QCOMPARE(tool.ask("ksscope capture" + arguments), refused(reason));
    QVERIFY(!QFile::exists(tool.getPath(QStringLiteral("out.vcd"))));
}

void TestSimulatorCapture::aBoardCanRefuseEveryCapture()
{
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "capture = 'refused'\n");
    tool.start();
    QCOMPARE(tool.ask("ksscope capture out.vcd 1E6 immediate=1"),
             refused("Capture refused, the trace memory is in use"));
    QVERIFY(!QFile::exists(tool.getPath(QStringLiteral("out.vcd"))));
}

void TestSimulatorCapture::onlyAnImmediateCaptureDoesNotWaitForItsTrigger()
{
    // The trigger comes after a second times the time scale: too late for any test to wait for.
    SimulatedTool tool;
    tool.setWholeScenario("time_scale = 1000000.0\n" + getOneBoard());
    tool.start();
    QVERIFY(tool.ask("ksscope capture out.vcd 1E6 immediate=1").endsWith("COMMAND SUCCEEDED\n"));
    tool.setWholeScenario("time_scale = 0.2\n" + getOneBoard());
    tool.ask("board list");
    QElapsedTimer timer;
    timer.start();
    QVERIFY(tool.ask("ksscope capture out.vcd 1E6").endsWith("COMMAND SUCCEEDED\n"));
    QVERIFY(timer.elapsed() >= 200);
}

QTEST_GUILESS_MAIN(TestSimulatorCapture)
#include "tst_simulator_capture.moc"
