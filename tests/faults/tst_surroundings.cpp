// The panel as a whole in surroundings that lack something.

#include "Program.h"
#include "support/Bench.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <fstream>
#include <memory>

using Test::Bench;
using Test::Program;

namespace
{

/// A locale whose encoding is not UTF-8.
const char latin[] = "en_US.ISO-8859-1";

} // namespace

class TestSurroundings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void settingsThatCannotBeStoredAreTold_data();
    void settingsThatCannotBeStoredAreTold();
    void settingsThatCanBeStoredAreNotSpokenOf();
    void tooFewOpenFilesAreToldBeforeAnythingIsTouched_data();
    void tooFewOpenFilesAreToldBeforeAnythingIsTouched();
    void namesKeepTheirBytesWhateverTheLocale_data();
    void namesKeepTheirBytesWhateverTheLocale();
    void aNameThatIsNoTextIsRefused_data();
    void aNameThatIsNoTextIsRefused();

private:
    /// Has the program run in that locale, which is made when it is the one of another encoding.
    void setLocale(const QString& locale);

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Program> program;
};

void TestSurroundings::init()
{
    bench = std::make_unique<Bench>();
    bench->setScenario(Bench::board("Aurora"));
    program = std::make_unique<Program>();
}

void TestSurroundings::cleanup()
{
    program.reset();
    bench.reset();
}

void TestSurroundings::settingsThatCannotBeStoredAreTold_data()
{
    QTest::addColumn<bool>("hasDirectory");
    QTest::newRow("no directory for them") << false;
    QTest::newRow("a directory in their place") << true;
}

void TestSurroundings::settingsThatCannotBeStoredAreTold()
{
    QFETCH(bool, hasDirectory);
    // Neither can be written by anybody.
    if (hasDirectory) {
        QVERIFY(QDir::current().mkpath("config/Kestoboard/kestoboard.conf/inside"));
    } else {
        bench->writeFile("config", "a file in place of the directory");
    }
    program->setVariable("XDG_CONFIG_HOME", bench->getPath("config"));
    program->setPath(Program::getActorPath());
    QVERIFY(program->run({"leave-when-idle"}));
    QCOMPARE(program->getStatus(), 0);
    const QString sentence = "Settings cannot be kept: the file " +
                             bench->getPath("config/Kestoboard/kestoboard.conf") +
                             " cannot be written";
    QVERIFY2(program->getOutput().contains(sentence), qPrintable(program->getOutput()));
    QCOMPARE(program->getOutput().count("Settings cannot be kept"), 1);
}

void TestSurroundings::settingsThatCanBeStoredAreNotSpokenOf()
{
    program->setPath(Program::getActorPath());
    QVERIFY(program->run({"leave-when-idle"}));
    QCOMPARE(program->getStatus(), 0);
    QVERIFY2(!program->getOutput().contains("Settings"), qPrintable(program->getOutput()));
}

void TestSurroundings::tooFewOpenFilesAreToldBeforeAnythingIsTouched_data()
{
    QTest::addColumn<int>("limit");
    for (const int limit : {6, 10, 20, 40, 60}) {
        QTest::addRow("%d", limit) << limit;
    }
}

void TestSurroundings::tooFewOpenFilesAreToldBeforeAnythingIsTouched()
{
    QFETCH(int, limit);
    program->setPath("/bin/sh");
    QVERIFY(program->run(
        {"-c", QString("ulimit -n %1; exec \"$0\"").arg(limit), Program::getPanelPath()}));
    QCOMPARE(program->getStatus(), 1);
    const QString said = program->getErrors();
    QVERIFY2(said.contains("The panel may open too few files"), qPrintable(said));
    QVERIFY2(said.contains("ulimit -n"), qPrintable(said));
    QVERIFY(!QFile::exists("ksbase.log"));
    QCOMPARE(bench->getJournal(), QStringList());
}

void TestSurroundings::namesKeepTheirBytesWhateverTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    // The last but one is installed nowhere: the C locale takes its place. The last one is made.
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "xx_YY.ISO-8859-1", latin}) {
        QTest::newRow(locale) << locale;
    }
}

void TestSurroundings::namesKeepTheirBytesWhateverTheLocale()
{
    QFETCH(QString, locale);
    bench->setScenario(Bench::board("Südbahn"));
    const QString file = bench->writeFile("entwürfe.ksb", "content");
    setLocale(locale);
    program->setPath(Program::getActorPath());
    QVERIFY(program->run({"load-and-leave", file}));
    QCOMPARE(program->getStatus(), 0);
    const QString output = program->getOutput();
    QVERIFY2(output.contains("Connected Südbahn"), qPrintable(output));
    QVERIFY2(output.contains("Bitstream successfully sent"), qPrintable(output));
    QCOMPARE(bench->count("chip bitstream load " + file), 1);
    QVERIFY(bench->readFile("ksbase.log").contains("Südbahn"));
}

void TestSurroundings::setLocale(const QString& locale)
{
    program->setVariable("LC_ALL", locale);
    if (locale != latin) {
        return;
    }
    // By its whole path: a mere name is one among the system's own.
    QProcess maker;
    maker.start("localedef",
                {"--no-archive", "-i", "en_US", "-f", "ISO-8859-1", bench->getPath(latin)});
    QVERIFY(maker.waitForFinished(-1));
    QVERIFY2(maker.exitCode() == 0, maker.readAllStandardError());
    program->setVariable("LOCPATH", bench->getPath({}));

    // It is one that the system takes.
    Program asker;
    asker.setVariable("LC_ALL", locale);
    asker.setVariable("LOCPATH", bench->getPath({}));
    asker.setPath("/usr/bin/locale");
    QVERIFY(asker.run({"charmap"}));
    QCOMPARE(asker.getOutput(), QString("ISO-8859-1\n"));
}

void TestSurroundings::aNameThatIsNoTextIsRefused_data()
{
    QTest::addColumn<QString>("locale");
    for (const char* locale : {"C", "C.UTF-8", latin}) {
        QTest::newRow(locale) << locale;
    }
}

void TestSurroundings::aNameThatIsNoTextIsRefused()
{
    QFETCH(QString, locale);
    setLocale(locale);
    const QByteArray file = QFile::encodeName(QDir::currentPath()) + "/entw\xfcrfe.ksb";
    QVERIFY(std::ofstream(file.constData()) << "content");
    program->setPath("/bin/sh");
    QVERIFY(program->run({"-c", "exec \"$0\" ./entw*rfe.ksb", Program::getPanelPath()}));
    QCOMPARE(program->getStatus(), 1);
    const QString said = program->getErrors();
    QVERIFY2(said.contains("There is no file \""), qPrintable(said));
    QCOMPARE(bench->getJournal(), QStringList());
}

KESTOBOARD_TEST_MAIN(TestSurroundings)

#include "tst_surroundings.moc"
