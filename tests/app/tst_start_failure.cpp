#include "app/StartFailure.h"

#include "app/DirectoryLock.h"
#include "app/KeptTranscript.h"
#include "app/LastWords.h"
#include "app/LastWordsDialog.h"
#include "support/Bench.h"
#include "support/TestMain.h"

#include <foundation/Critical.h>
#include <foundation/Fatal.h>

#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include <functional>
#include <stdexcept>

using Kestoboard::StartFailure;
using Test::Bench;

Q_DECLARE_METATYPE(std::function<void()>)

namespace
{

StartFailure explain(const std::function<void()>& thrower)
{
    try {
        thrower();
    } catch (...) {
        return StartFailure::fromCurrentException();
    }
    return {"nothing was thrown", {}, false};
}

} // namespace

class TestStartFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aMissingToolOffersSimulatedBoards();
    void anUnwritableTranscriptNamesTheDirectory();
    void anotherFailureKeepsItsWords_data();
    void anotherFailureKeepsItsWords();
    void theLastWordsHoldTheConsoleAndTheTranscript();
    void theLastWordsAreTheLatest();
    void theLastWordsCanBeCopiedAndThePanelStartedAgain();
    void aTranscriptThatCannotBeKeptIsToldFirst();
    void whatAnotherPanelWritesIsLeftToIt();
    void aDirectoryIsTakenOnce();

private:
    QScopedPointer<Bench> bench;
};

void TestStartFailure::init()
{
    bench.reset(new Bench);
}

void TestStartFailure::cleanup()
{
    bench.reset();
}

void TestStartFailure::aMissingToolOffersSimulatedBoards()
{
    qputenv("PATH", "/usr/bin:/bin");
    const StartFailure failure =
        explain([] { throw Orvex::Critical("Cannot found ksbase2_cli in $PATH"); });
    QVERIFY(failure.getSentence().contains("ksbase2_cli is not on the search path"));
    QVERIFY(failure.getAdvice().contains("PATH"));
    QVERIFY(failure.canSimulate());
}

void TestStartFailure::anUnwritableTranscriptNamesTheDirectory()
{
    QDir().mkdir("ksbase.log");
    const StartFailure failure =
        explain([] { throw Orvex::Critical("Unable to write file ksbase.log"); });
    QVERIFY(failure.getSentence().contains(QDir::currentPath()));
    QVERIFY(failure.getAdvice().contains("--directory"));
    QVERIFY(!failure.canSimulate());
}

void TestStartFailure::anotherFailureKeepsItsWords_data()
{
    QTest::addColumn<std::function<void()>>("thrower");
    QTest::addColumn<QString>("words");
    QTest::newRow("of the panel") << std::function<void()>([] {
        throw Orvex::Fatal("Something broke");
    }) << "Something broke";
    QTest::newRow("standard") << std::function<void()>([] {
        throw std::runtime_error("out of luck");
    }) << "out of luck";
    QTest::newRow("strange") << std::function<void()>([] { throw 42; })
                             << "the reason is not known";
}

void TestStartFailure::anotherFailureKeepsItsWords()
{
    QFETCH(std::function<void()>, thrower);
    QFETCH(QString, words);
    const StartFailure failure = explain(thrower);
    QVERIFY2(failure.getSentence().contains(words), qPrintable(failure.getSentence()));
    QVERIFY(failure.getAdvice().contains("ksbase.log"));
}

void TestStartFailure::theLastWordsHoldTheConsoleAndTheTranscript()
{
    Orvex::console->print("Loading é", "");
    Orvex::console->indent();
    Orvex::console->error("Bitstream failed", "");
    Orvex::console->unindent();
    const QString text = QString::fromStdString(Kestoboard::LastWords::getText());
    QVERIFY2(text.contains("\n  Loading é\n    Bitstream failed\n"), qPrintable(text));
    QVERIFY(text.endsWith(bench->getPath("ksbase.log") + "\n"));
}

void TestStartFailure::theLastWordsAreTheLatest()
{
    for (int line = 0; line < 100; ++line) {
        Orvex::console->print("line " + std::to_string(line), "");
    }
    const QString text = QString::fromStdString(Kestoboard::LastWords::getText());
    QVERIFY(text.contains("  line 99\n"));
    QVERIFY(!text.contains("  line 50\n"));
}

void TestStartFailure::theLastWordsCanBeCopiedAndThePanelStartedAgain()
{
    Kestoboard::LastWordsDialog dialog("the last line\n", [] { return true; });
    QSignalSpy spy(&dialog, &Kestoboard::LastWordsDialog::startAgainRequested);
    dialog.findChild<QPushButton*>("copyButton")->click();
    QCOMPARE(QApplication::clipboard()->text(), QString("the last line\n"));
    QCOMPARE(spy.count(), 0);
    dialog.findChild<QPushButton*>("startAgainButton")->click();
    QCOMPARE(spy.count(), 1);
}

void TestStartFailure::aTranscriptThatCannotBeKeptIsToldFirst()
{
    Kestoboard::LastWordsDialog dialog("the last line", [] { return false; });
    QSignalSpy spy(&dialog, &Kestoboard::LastWordsDialog::startAgainRequested);
    const auto isTold = [&dialog] {
        const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->text().startsWith("The transcript cannot be renamed.");
        });
    };
    QVERIFY(!isTold());
    dialog.findChild<QPushButton*>("startAgainButton")->click();
    QCOMPARE(spy.count(), 0);
    QVERIFY(isTold());
    dialog.findChild<QPushButton*>("startAgainButton")->click();
    QCOMPARE(spy.count(), 1);
}

void TestStartFailure::whatAnotherPanelWritesIsLeftToIt()
{
    QDir().mkdir("lab");
    QVERIFY(Kestoboard::keepTranscript(bench->getPath("lab")));
    bench->writeFile("lab/ksbase.log", "the next one");
    Kestoboard::DirectoryLock next;
    QVERIFY(next.take("lab"));
    QVERIFY(Kestoboard::keepTranscript(bench->getPath("lab")));
    QCOMPARE(bench->readFile("lab/ksbase.log"), QByteArray("the next one"));
    next.release();
    QVERIFY(Kestoboard::keepTranscript(bench->getPath("lab")));
    QVERIFY(!QFile::exists("lab/ksbase.log"));
}

void TestStartFailure::aDirectoryIsTakenOnce()
{
    Kestoboard::DirectoryLock first;
    Kestoboard::DirectoryLock second;
    QVERIFY(first.take());
    QVERIFY(!second.take());
    QVERIFY2(second.getHolder().contains(QString::number(QCoreApplication::applicationPid())),
             qPrintable(second.getHolder()));
    first.release();
    QVERIFY(second.take());
    second.release();
    QVERIFY(QDir().isEmpty());
}

KESTOBOARD_TEST_MAIN(TestStartFailure)
#include "tst_start_failure.moc"
