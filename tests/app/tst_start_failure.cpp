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
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
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
    void aHugeLineIsShownCutAndCopiedWhole();
    void aTranscriptThatCannotBeKeptIsToldFirst();
    void whatAnotherPanelWritesIsLeftToIt();
    void aTranscriptIsKeptUnderTheNameThatWasTold();
    void aTranscriptNeverTakesThePlaceOfAnotherFile();
    void theLastWindowNamesTheFileThatIsKept_data();
    void theLastWindowNamesTheFileThatIsKept();
    void aDirectoryIsTakenOnce();
    void aLockThatNamesNobodyKeepsNobodyOut_data();
    void aLockThatNamesNobodyKeepsNobodyOut();
    void aLockThatIsHeldCountsWhateverItSays();

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
    Kestoboard::LastWordsDialog dialog("the last line\n", "kept.log", [] { return true; });
    QSignalSpy spy(&dialog, &Kestoboard::LastWordsDialog::startAgainRequested);
    dialog.findChild<QPushButton*>("copyButton")->click();
    QCOMPARE(QApplication::clipboard()->text(), QString("the last line\n"));
    QCOMPARE(spy.count(), 0);
    dialog.findChild<QPushButton*>("startAgainButton")->click();
    QCOMPARE(spy.count(), 1);
}

void TestStartFailure::aHugeLineIsShownCutAndCopiedWhole()
{
    const QString surrogates = QString::fromUcs4(U"\U0001F600");
    const QString text =
        "first\n" + QString(1999, 'x') + surrogates + QString(10'000'000, 'y') + "\nlast\n";
    Kestoboard::LastWordsDialog dialog(text, "kept.log", [] { return true; });
    dialog.show();
    QCOMPARE(dialog.findChild<QPlainTextEdit*>()->toPlainText(),
             "first\n" + QString(1999, 'x') +
                 QString::fromUtf8("… (10,000,002 more characters, which \"Copy\" takes as well)") +
                 "\nlast\n");
    dialog.findChild<QPushButton*>("copyButton")->click();
    QVERIFY(QApplication::clipboard()->text() == text);
}

void TestStartFailure::aTranscriptThatCannotBeKeptIsToldFirst()
{
    Kestoboard::LastWordsDialog dialog("the last line", "kept.log", [] { return false; });
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
    const QString lab = bench->getPath("lab");
    QVERIFY(Kestoboard::KeptTranscript(lab).keep());
    QCOMPARE(Kestoboard::KeptTranscript(lab).getName(), QString());
    bench->writeFile("lab/ksbase.log", "the next one");
    Kestoboard::DirectoryLock next;
    QVERIFY(next.take("lab"));
    QVERIFY(Kestoboard::KeptTranscript(lab).keep());
    QCOMPARE(bench->readFile("lab/ksbase.log"), QByteArray("the next one"));
    next.release();
    QVERIFY(Kestoboard::KeptTranscript(lab).keep());
    QVERIFY(!QFile::exists("lab/ksbase.log"));
}

void TestStartFailure::aTranscriptIsKeptUnderTheNameThatWasTold()
{
    QDir().mkdir("lab");
    const QDateTime written(QDate(2026, 4, 1), QTime(9, 30, 7, 250));
    for (const QString& name :
         QStringList{"ksbase-20260401-093007-250.log", "ksbase-20260401-093007-250-2.log"}) {
        QFile file(bench->writeFile("lab/ksbase.log", name.toUtf8()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(written, QFileDevice::FileModificationTime));
        file.close();
        const Kestoboard::KeptTranscript transcript(bench->getPath("lab"));
        QCOMPARE(transcript.getName(), name);
        // Whatever comes in between, what was told stays true.
        bench->writeFile("lab/ksbase.log", name.toUtf8());
        QVERIFY(transcript.keep());
        QCOMPARE(bench->readFile("lab/" + name), name.toUtf8());
        QVERIFY(!QFile::exists("lab/ksbase.log"));
    }
}

void TestStartFailure::aTranscriptNeverTakesThePlaceOfAnotherFile()
{
    QDir().mkdir("lab");
    bench->writeFile("lab/ksbase.log", "the one that ended");
    const Kestoboard::KeptTranscript transcript(bench->getPath("lab"));
    bench->writeFile("lab/" + transcript.getName(), "of somebody else");
    QVERIFY(!transcript.keep());
    QCOMPARE(bench->readFile("lab/ksbase.log"), QByteArray("the one that ended"));
    QCOMPARE(bench->readFile("lab/" + transcript.getName()), QByteArray("of somebody else"));
}

void TestStartFailure::theLastWindowNamesTheFileThatIsKept_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a transcript") << "ksbase-20260401-093007-250.log"
                                  << "\"Start again\" begins a new transcript. This one is kept "
                                     "beside it as ksbase-20260401-093007-250.log.";
    QTest::newRow("none") << ""
                          << "";
}

void TestStartFailure::theLastWindowNamesTheFileThatIsKept()
{
    QFETCH(QString, name);
    QFETCH(QString, sentence);
    Kestoboard::LastWordsDialog dialog("the last line", name, [] { return true; });
    const auto* const remark = dialog.findChild<QLabel*>("keptRemark");
    dialog.show();
    QCOMPARE(remark->isVisible() ? remark->text() : QString(), sentence);
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

void TestStartFailure::aLockThatNamesNobodyKeepsNobodyOut_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty, after a power failure") << QByteArray();
    QTest::newRow("nonsense") << QByteArray("\x01\xff\n\n\xfe nonsense");
}

void TestStartFailure::aLockThatNamesNobodyKeepsNobodyOut()
{
    QFETCH(QByteArray, content);
    bench->writeFile(".kestoboard.lock", content);
    Kestoboard::DirectoryLock lock;
    QVERIFY(lock.take());
    Kestoboard::DirectoryLock second;
    QVERIFY(!second.take());
}

void TestStartFailure::aLockThatIsHeldCountsWhateverItSays()
{
    Kestoboard::DirectoryLock first;
    QVERIFY(first.take());
    // As on a disk that was full when the panel began.
    QVERIFY(QFile::resize(".kestoboard.lock", 0));
    Kestoboard::DirectoryLock second;
    QVERIFY(!second.take());
    QCOMPARE(second.getHolder(), QString("Another Kestoboard"));
    QVERIFY(!second.isHeldElsewhere());
    QVERIFY(QFile::exists(".kestoboard.lock"));
}

KESTOBOARD_TEST_MAIN(TestStartFailure)
#include "tst_start_failure.moc"
