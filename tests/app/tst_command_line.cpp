#include "app/CommandLine.h"

#include "app/SimulatedTool.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using Kestoboard::CommandLine;
using Kestoboard::Options;
using Kestoboard::SimulatedTool;

Q_DECLARE_METATYPE(CommandLine::Action)

namespace
{

CommandLine read(QStringList arguments)
{
    arguments.prepend(QStringLiteral("kestoboard"));
    return CommandLine(arguments);
}

/// The options that the lines begin with, sorted; what is no option at the head of a line is left.
QStringList findOptions(const QStringList& lines)
{
    const QRegularExpression heads("^ *(--?[a-z]+(, --?[a-z]+)*)");
    QStringList options;
    for (const QString& line : lines) {
        options += heads.match(line).captured(1).split(", ", Qt::SkipEmptyParts);
    }
    options.sort();
    return options;
}

/// The heads of the entries of the page's options, as a reader sees them.
QStringList readManPageHeads()
{
    QFile page(KESTOBOARD_MAN_PAGE);
    if (!page.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QString options =
        QString(page.readAll()).section(".SH OPTIONS\n", 1).section(".SH ", 0, 0);
    QStringList heads;
    for (const QString& entry : options.split(".TP\n", Qt::SkipEmptyParts)) {
        heads += entry.section('\n', 0, 0)
                     .remove(QRegularExpression("^\\.[BRI]+ "))
                     .replace(" \", \" ", ", ")
                     .replace("\\-", "-");
    }
    return heads;
}

} // namespace

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void withoutOptionsNothingIsAskedFor();
    void anOptionIsUnderstood_data();
    void anOptionIsUnderstood();
    void theScenarioMayFollowSimulate_data();
    void theScenarioMayFollowSimulate();
    void theArgumentAfterSimulateCanBeTheBitstream();
    void pathsStartAtTheCurrentDirectory();
    void helpWinsOverEverythingElse();
    void theManPageHasTheOptionsOfTheHelp();
    void aFileThatCannotBeChosenIsComplainedOf();
    void aRefusalSaysWhy_data();
    void aRefusalSaysWhy();

private:
    QScopedPointer<QTemporaryDir> directory;
    QString formerDirectory;
};

void TestCommandLine::initTestCase()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("7.8"));
    formerDirectory = QDir::currentPath();
}

void TestCommandLine::init()
{
    directory.reset(new QTemporaryDir);
    QDir::setCurrent(directory->path());
    QDir().mkdir(QStringLiteral("lab"));
    for (const char* const name : {"design.ksb", "bench.toml", "line\nbreak.ksb"}) {
        QFile file(QString::fromLatin1(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("bits") == 4);
    }
}

void TestCommandLine::cleanup()
{
    QDir::setCurrent(formerDirectory);
}

void TestCommandLine::withoutOptionsNothingIsAskedFor()
{
    const CommandLine line = read({});
    QCOMPARE(line.getAction(), CommandLine::Action::Run);
    const Options& options = line.getOptions();
    QVERIFY(!options.isDebug);
    QVERIFY(!options.isSimulating);
    QCOMPARE(options.scenario + options.directory + options.tour + options.bitstream, QString());
}

void TestCommandLine::anOptionIsUnderstood_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<CommandLine::Action>("action");
    QTest::addColumn<QString>("text");

    QTest::newRow("--help") << QStringList("--help") << CommandLine::Action::ShowHelp
                            << "--simulate [SCENARIO]";
    QTest::newRow("-h") << QStringList("-h") << CommandLine::Action::ShowHelp << "Usage: ";
    QTest::newRow("--version") << QStringList("--version") << CommandLine::Action::ShowVersion
                               << "Kestoboard 7.8\n";
    QTest::newRow("-v") << QStringList("-v") << CommandLine::Action::ShowVersion
                        << "Kestoboard 7.8\n";
    QTest::newRow("--debug") << QStringList("--debug") << CommandLine::Action::Run << "";
}

void TestCommandLine::anOptionIsUnderstood()
{
    QFETCH(QStringList, arguments);
    QFETCH(CommandLine::Action, action);
    QFETCH(QString, text);
    const CommandLine line = read(arguments);
    QCOMPARE(line.getAction(), action);
    QVERIFY2(line.getText().contains(text), qPrintable(line.getText()));
    QCOMPARE(line.getOptions().isDebug, arguments.contains("--debug"));
}

void TestCommandLine::theScenarioMayFollowSimulate_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("scenario");

    const QString shipped = SimulatedTool::getScenarioFile("three-boards");
    const QString own = QStringLiteral("bench.toml");
    QTest::newRow("none") << QStringList{"--simulate"} << "";
    QTest::newRow("none, then an option") << QStringList{"--simulate", "--debug"} << "";
    QTest::newRow("a name") << QStringList{"--simulate", "three-boards"} << shipped;
    QTest::newRow("a name after =") << QStringList{"--simulate=three-boards"} << shipped;
    QTest::newRow("a file") << QStringList{"--simulate", "bench.toml"} << own;
    QTest::newRow("a file after =") << QStringList{"--simulate=bench.toml"} << own;
    QTest::newRow("a file and a bitstream")
        << QStringList{"--simulate", "bench.toml", "design.ksb"} << own;
}

void TestCommandLine::theScenarioMayFollowSimulate()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, scenario);
    const CommandLine line = read(arguments);
    QCOMPARE(line.getText(), QString());
    QVERIFY(line.getOptions().isSimulating);
    const QString expected =
        scenario.isEmpty() ? QString() : QFileInfo(scenario).absoluteFilePath();
    QCOMPARE(line.getOptions().scenario, expected);
}

void TestCommandLine::theArgumentAfterSimulateCanBeTheBitstream()
{
    const CommandLine line = read({"--simulate", "design.ksb"});
    QCOMPARE(line.getAction(), CommandLine::Action::Run);
    QCOMPARE(line.getOptions().scenario, QString());
    QCOMPARE(line.getOptions().bitstream, QDir::current().filePath("design.ksb"));
}

void TestCommandLine::pathsStartAtTheCurrentDirectory()
{
    const CommandLine line = read({"--directory", "lab", "--tour", "pictures", "design.ksb"});
    QCOMPARE(line.getText(), QString());
    QCOMPARE(line.getOptions().directory, QDir::current().filePath("lab"));
    QCOMPARE(line.getOptions().tour, QDir::current().filePath("pictures"));
    QCOMPARE(line.getOptions().bitstream, QDir::current().filePath("design.ksb"));
}

void TestCommandLine::helpWinsOverEverythingElse()
{
    QCOMPARE(read({"--nonsense", "--help"}).getAction(), CommandLine::Action::ShowHelp);
    QCOMPARE(read({"--version", "--help"}).getAction(), CommandLine::Action::ShowHelp);
}

void TestCommandLine::theManPageHasTheOptionsOfTheHelp()
{
    const QStringList inHelp = findOptions(read({"--help"}).getText().split('\n'));
    QVERIFY(inHelp.contains("--simulate") && inHelp.contains("-h"));
    QCOMPARE(findOptions(readManPageHeads()), inHelp);
}

void TestCommandLine::aFileThatCannotBeChosenIsComplainedOf()
{
    const CommandLine line = read({"line\nbreak.ksb"});
    QCOMPARE(line.getAction(), CommandLine::Action::Run);
    QCOMPARE(line.getOptions().bitstream, QString());
    QVERIFY(line.getOptions().complaint.contains("holds a line break"));
    QCOMPARE(read({"design.ksb"}).getOptions().complaint, QString());
}

void TestCommandLine::aRefusalSaysWhy_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown option") << QStringList{"--nonsense"} << "Unknown option 'nonsense'.";
    QTest::newRow("no value") << QStringList{"--tour"} << "Missing value";
    QTest::newRow("empty tour") << QStringList{"--tour", ""} << "needs the directory";
    QTest::newRow("no directory") << QStringList{"--directory", "nowhere"}
                                  << "There is no directory \"nowhere\"";
    QTest::newRow("a file as directory")
        << QStringList{"--directory", "design.ksb"} << "There is no directory \"design.ksb\"";
    QTest::newRow("a misspelt scenario")
        << QStringList{"--simulate", "three-board"} << "There is no scenario \"three-board\"";
    QTest::newRow("no scenario") << QStringList{"--simulate=many-boards"}
                                 << "There is no scenario \"many-boards\"";
    QTest::newRow("no scenario file")
        << QStringList{"--simulate", "gone.toml"} << "There is no scenario \"gone.toml\"";
    QTest::newRow("no bitstream") << QStringList{"gone.ksb"} << "There is no file";
    QTest::newRow("a directory as bitstream") << QStringList{"lab"} << "is a directory";
    QTest::newRow("two bitstreams")
        << QStringList{"design.ksb", "design.ksb"} << "Only one bitstream file";
    QTest::newRow("a line break on a tour")
        << QStringList{"--tour", "lab", "line\nbreak.ksb"} << "holds a line break";
}

void TestCommandLine::aRefusalSaysWhy()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);
    const CommandLine line = read(arguments);
    QCOMPARE(line.getAction(), CommandLine::Action::Refuse);
    QVERIFY2(line.getText().contains(reason), qPrintable(line.getText()));
}

KESTOBOARD_TEST_MAIN(TestCommandLine)
#include "tst_command_line.moc"
