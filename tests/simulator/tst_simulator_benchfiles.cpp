#include "SimulatedTool.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace
{

QString getShipped(const QString& name)
{
    return QStringLiteral(SHIPPED_SCENARIOS "/") + name;
}

void useShipped(SimulatedTool& tool, const QString& name)
{
    QProcessEnvironment environment = tool.process.processEnvironment();
    environment.insert(QStringLiteral("KESTOBOARD_SCENARIO"), getShipped(name));
    tool.process.setProcessEnvironment(environment);
    tool.start();
}

QByteArrayList getExampleLines(const QString& name)
{
    QFile file(QStringLiteral(EXAMPLE_COMMANDS "/") + name);
    QByteArrayList lines;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().split('\n')) {
            const QByteArray command = line.simplified();
            if (!command.isEmpty() && !command.startsWith('#')) {
                lines.append(command);
            }
        }
    }
    return lines;
}

} // namespace

/// The scenarios and the command files that come with the program.
class TestSimulatorBenchfiles : public QObject
{
    Q_OBJECT

private slots:
    void everyScenarioIsRead_data();
    void everyScenarioIsRead();
    void theTroubledBenchHasSomethingForEveryPage();
    void everyExampleIsUnderstood_data();
    void everyExampleIsUnderstood();
    void everyScenarioOfTheDocumentIsRead();
};

void TestSimulatorBenchfiles::everyScenarioIsRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("boards");
    QTest::newRow("one board") << QStringLiteral("one-board.toml") << 1;
    QTest::newRow("three boards") << QStringLiteral("three-boards.toml") << 3;
    QTest::newRow("a troubled bench") << QStringLiteral("troubled-bench.toml") << 2;
}

void TestSimulatorBenchfiles::everyScenarioIsRead()
{
    QFETCH(QString, name);
    QFETCH(int, boards);
    QCOMPARE(QDir(QStringLiteral(SHIPPED_SCENARIOS)).entryList(QDir::Files).size(), 3);
    SimulatedTool tool;
    useShipped(tool, name);
    const QByteArray listing = tool.ask("board list");
    QVERIFY2(listing.endsWith("COMMAND SUCCEEDED\n"), listing.constData());
    QCOMPARE(listing.count("0x534B"), boards);
    for (int board = 0; board < boards; ++board) {
        QCOMPARE(tool.ask("board select " + QByteArray::number(board)),
                 QByteArray("OK\nCOMMAND SUCCEEDED\n"));
        QVERIFY(tool.ask("board monitor get 0").contains("VCore: "));
    }
}

void TestSimulatorBenchfiles::theTroubledBenchHasSomethingForEveryPage()
{
    SimulatedTool tool;
    tool.makeFile(QStringLiteral("design.ksb"), "bits");
    useShipped(tool, QStringLiteral("troubled-bench.toml"));
    tool.ask("board list");
    QVERIFY(tool.ask("board set mode 'Jtag only'").startsWith("Error: "));
    QCOMPARE(tool.ask("board get mode"), QByteArray("Factory test\nCOMMAND SUCCEEDED\n"));
    QVERIFY(tool.ask("board get force_bit").startsWith("Error: "));
    QVERIFY(tool.ask("board set reset on").startsWith("Error: "));
    QVERIFY(tool.ask("ksscope capture out.vcd 1E6").startsWith("Error: "));
    QVERIFY(tool.ask("chip bitstream load design.ksb").contains("Counters: 1 exception(s)"));
    const QByteArray report = tool.ask("board monitor get 0");
    QCOMPARE(report.count("VCore: "), 2);
    QVERIFY(report.contains("Phases: 0.61A 0.66A 0.63A\n"));
    QVERIFY(report.contains("\xC3\xA9rature"));
    // The cut inside the degree sign: the first of its two bytes ends a piece.
    QCOMPARE(static_cast<unsigned char>(report.at(38)), static_cast<unsigned char>(0xC2));
}

void TestSimulatorBenchfiles::everyExampleIsUnderstood_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names =
        QDir(QStringLiteral(EXAMPLE_COMMANDS)).entryList({QStringLiteral("*.cmd")}, QDir::Files);
    QVERIFY(names.size() >= 3);
    for (const QString& name : names) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestSimulatorBenchfiles::everyExampleIsUnderstood()
{
    QFETCH(QString, name);
    SimulatedTool tool;
    tool.setScenario(getOneBoard() + "[[board.channel]]\nname = 'V'\nvoltage = 1\n");
    tool.start();
    const QByteArrayList lines = getExampleLines(name);
    QVERIFY(!lines.isEmpty());
    for (const QByteArray& line : lines) {
        const QByteArray answer = tool.ask(line);
        QVERIFY2(answer.endsWith("COMMAND SUCCEEDED\n"), (line + "\n" + answer).constData());
    }
}

void TestSimulatorBenchfiles::everyScenarioOfTheDocumentIsRead()
{
    QFile document(QStringLiteral(DOCUMENT));
    QVERIFY(document.open(QIODevice::ReadOnly));
    const QStringList parts =
        QString::fromUtf8(document.readAll()).split(QStringLiteral("```toml\n"));
    QVERIFY(parts.size() > 3);
    for (const QString& part : parts.mid(1)) {
        const QString scenario = part.section(QStringLiteral("```"), 0, 0);
        SimulatedTool tool;
        tool.setScenario(scenario.toUtf8());
        tool.start();
        QVERIFY2(tool.ask("board list").endsWith("COMMAND SUCCEEDED\n"), qPrintable(scenario));
    }
}

QTEST_GUILESS_MAIN(TestSimulatorBenchfiles)
#include "tst_simulator_benchfiles.moc"
