// Every input that is kept for the fuzzing, read without it: a target a row. A finding has a test
// of its own here, named for what was wrong.

#include "Targets.h"
#include "support/TestMain.h"

#include <ScenarioError.h>
#include <ScenarioReader.h>

#include <QDir>
#include <QFile>

class TestFuzzCorpus : public QObject
{
    Q_OBJECT

private slots:
    void everyKeptInputIsReadAsPromised_data();
    void everyKeptInputIsReadAsPromised();
    void everyTargetHasACorpusAndEveryCorpusATarget();
    void aRefusedScenarioIsToldInOneLine_data();
    void aRefusedScenarioIsToldInOneLine();
};

void TestFuzzCorpus::everyKeptInputIsReadAsPromised_data()
{
    QTest::addColumn<int>("number");
    int number = 0;
    for (const Fuzz::Target& target : Fuzz::getTargets()) {
        QTest::newRow(target.name) << number++;
    }
}

void TestFuzzCorpus::everyKeptInputIsReadAsPromised()
{
    QFETCH(int, number);
    const Fuzz::Target& target = Fuzz::getTargets().at(static_cast<std::size_t>(number));
    const QDir corpus(QDir(KESTOBOARD_FUZZ_CORPUS).filePath(target.name));
    const QStringList names = corpus.entryList(QDir::Files, QDir::Name);
    QVERIFY(!names.isEmpty());
    for (const QString& name : names) {
        QFile file(corpus.filePath(name));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
        try {
            target.run(file.readAll().toStdString());
        } catch (const std::exception& failure) {
            QFAIL(qPrintable(name + ": " + failure.what()));
        }
    }
}

void TestFuzzCorpus::everyTargetHasACorpusAndEveryCorpusATarget()
{
    QStringList names;
    for (const Fuzz::Target& target : Fuzz::getTargets()) {
        names << target.name;
    }
    names.sort();
    QCOMPARE(QDir(KESTOBOARD_FUZZ_CORPUS).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
             names);
}

// The parser names what it met, and a key may be called anything: both held line breaks.
void TestFuzzCorpus::aRefusedScenarioIsToldInOneLine_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a key without a meaning") << QByteArray("\"a\\nCOMMAND SUCCEEDED\" = 1\n");
    QTest::newRow("a word without its end") << QByteArray("[[board]]\nmode_locked = tr\nname");
}

void TestFuzzCorpus::aRefusedScenarioIsToldInOneLine()
{
    QFETCH(QByteArray, text);
    std::string sentence;
    try {
        Simulator::parseScenario(text.toStdString(), "/bench/scenario.toml");
    } catch (const Simulator::ScenarioError& refusal) {
        sentence = refusal.what();
    }
    QVERIFY(!sentence.empty());
    QVERIFY2(sentence.find('\n') == std::string::npos, sentence.c_str());
}

KESTOBOARD_TEST_MAIN(TestFuzzCorpus)
#include "tst_fuzz_corpus.moc"
