#include <Board/Replies.h>

#include <QtTest>

using Board::ForceBitState;

Q_DECLARE_METATYPE(Board::ForceBitState)

class TestReplies : public QObject
{
    Q_OBJECT

private slots:
    void whiteSpaceIsSimplified_data();
    void whiteSpaceIsSimplified();
    void theFirstLineIsTakenUnchanged_data();
    void theFirstLineIsTakenUnchanged();
    void aSettingIsAcceptedByTwoLettersAnywhere_data();
    void aSettingIsAcceptedByTwoLettersAnywhere();
    void aFlashIsJudgedByItsMarkAlone();
    void aBitstreamIsJudgedByItsCountersAlone_data();
    void aBitstreamIsJudgedByItsCountersAlone();
    void theForceBitIsReadInOrder_data();
    void theForceBitIsReadInOrder();
    void theForceBitErrorLosesItsPrefix_data();
    void theForceBitErrorLosesItsPrefix();
};

void TestReplies::whiteSpaceIsSimplified_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("simplified");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("blanks only") << QByteArray(" \t\r\n\v\f ") << QByteArray();
    QTest::newRow("ends") << QByteArray("  a b  ") << QByteArray("a b");
    QTest::newRow("runs") << QByteArray("a \t\r\n b\v\fc") << QByteArray("a b c");
    QTest::newRow("nothing to do") << QByteArray("a b") << QByteArray("a b");
    QTest::newRow("bytes of UTF-8 characters")
        << QByteArray("\u00e0 \u00c5") << QByteArray("\u00e0 \u00c5");
}

void TestReplies::whiteSpaceIsSimplified()
{
    QFETCH(QByteArray, text);
    QTEST(QByteArray::fromStdString(Board::getSimplified(text.toStdString())), "simplified");
}

void TestReplies::theFirstLineIsTakenUnchanged_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("of several") << QByteArray(" Jtag only \nCOMMAND SUCCEEDED\n")
                                << QByteArray(" Jtag only ");
    QTest::newRow("of one") << QByteArray("COMMAND FAILED") << QByteArray("COMMAND FAILED");
    QTest::newRow("empty") << QByteArray("\nJtag only") << QByteArray();
}

void TestReplies::theFirstLineIsTakenUnchanged()
{
    QFETCH(QByteArray, reply);
    QTEST(QByteArray::fromStdString(Board::getFirstLine(reply.toStdString())), "line");
}

void TestReplies::aSettingIsAcceptedByTwoLettersAnywhere_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("line of its own") << QByteArray("OK\nCOMMAND SUCCEEDED\n") << true;
    QTest::newRow("on a later line") << QByteArray("a\nb\n OK\nCOMMAND FAILED\n") << true;
    QTest::newRow("within a word") << QByteArray("BOOKED") << true;
    QTest::newRow("lower case") << QByteArray("ok\nCOMMAND SUCCEEDED\n") << false;
    QTest::newRow("parted") << QByteArray("O\nK\nCOMMAND SUCCEEDED\n") << false;
    QTest::newRow("mark only") << QByteArray("COMMAND SUCCEEDED\n") << false;
}

void TestReplies::aSettingIsAcceptedByTwoLettersAnywhere()
{
    QFETCH(QByteArray, reply);
    QTEST(Board::isAccepted(reply.toStdString()), "isAccepted");
}

void TestReplies::aFlashIsJudgedByItsMarkAlone()
{
    QVERIFY(Board::isFlashProgrammed("Error: worn\nCOMMAND SUCCEEDED\n"));
    QVERIFY(!Board::isFlashProgrammed("OK\nCOMMAND FAILED\n"));
    QVERIFY(!Board::isFlashProgrammed("command succeeded"));
}

void TestReplies::aBitstreamIsJudgedByItsCountersAlone_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("isLoaded");
    const QByteArray clean =
        "Counters: 0 exception(s), 0 read32 timeout(s), 0 32bit word(s) read in error";
    QTest::newRow("clean") << clean + "\nCOMMAND SUCCEEDED\n" << true;
    QTest::newRow("clean, but failed") << clean + "\nCOMMAND FAILED\n" << true;
    QTest::newRow("succeeded without counters") << QByteArray("COMMAND SUCCEEDED\n") << false;
    QTest::newRow("exceptions") << QByteArray(clean).replace(": 0 e", ": 1 e") << false;
    QTest::newRow("timeouts") << QByteArray(clean).replace("0 read32", "2 read32") << false;
    QTest::newRow("words") << QByteArray(clean).replace("0 32bit", "3 32bit") << false;
    QTest::newRow("another blank") << QByteArray(clean).replace(", 0 32bit", ",  0 32bit") << false;
}

void TestReplies::aBitstreamIsJudgedByItsCountersAlone()
{
    QFETCH(QByteArray, reply);
    QTEST(Board::isBitstreamLoaded(reply.toStdString()), "isLoaded");
}

void TestReplies::theForceBitIsReadInOrder_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<ForceBitState>("state");
    QTest::newRow("set") << QByteArray("Forcebit is set\nCOMMAND SUCCEEDED\n")
                         << ForceBitState::Set;
    QTest::newRow("not set") << QByteArray("Forcebit is not set\nCOMMAND SUCCEEDED\n")
                             << ForceBitState::NotSet;
    QTest::newRow("error first") << QByteArray("Forcebit is set\nError: busy\n")
                                 << ForceBitState::Refused;
    QTest::newRow("both states") << QByteArray("Forcebit is not set\nForcebit is set\n")
                                 << ForceBitState::Set;
    QTest::newRow("lower case error")
        << QByteArray("error\nForcebit is not set") << ForceBitState::NotSet;
    QTest::newRow("nothing of it")
        << QByteArray("OK\nCOMMAND SUCCEEDED\n") << ForceBitState::Unknown;
}

void TestReplies::theForceBitIsReadInOrder()
{
    QFETCH(QByteArray, reply);
    QTEST(Board::getForceBitState(reply.toStdString()), "state");
}

void TestReplies::theForceBitErrorLosesItsPrefix_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("words");
    QTest::newRow("plain") << QByteArray("Error: no  answer \nCOMMAND FAILED")
                           << QByteArray("no answer");
    QTest::newRow("twice") << QByteArray("Error: a Error: b\n") << QByteArray("a b");
    QTest::newRow("lower case stays")
        << QByteArray("error: a\nError: b\n") << QByteArray("error: a");
    QTest::newRow("on a later line") << QByteArray("first\nError: second") << QByteArray("first");
    QTest::newRow("without its blank") << QByteArray("Error:a") << QByteArray("Error:a");
    QTest::newRow("made by a removal") << QByteArray("ErrError: or: a") << QByteArray("Error: a");
}

void TestReplies::theForceBitErrorLosesItsPrefix()
{
    QFETCH(QByteArray, reply);
    QTEST(QByteArray::fromStdString(Board::getForceBitError(reply.toStdString())), "words");
}

QTEST_APPLESS_MAIN(TestReplies)

#include "tst_replies.moc"
