#include <Board/EndMark.h>

#include <QtTest>

#include <random>

namespace
{

const QString success = QStringLiteral("COMMAND SUCCEEDED");
const QString failure = QStringLiteral("COMMAND FAILED");

/// What the search has to find, told without any cleverness.
int findByDefinition(const QString& text)
{
    const int successAt = text.indexOf(success);
    const int failureAt = text.indexOf(failure);
    if (successAt < 0 || failureAt < 0) {
        return qMax(successAt, failureAt);
    }
    return qMin(successAt, failureAt);
}

} // namespace

class TestEndMark : public QObject
{
    Q_OBJECT

private slots:
    void aMarkIsFoundAnywhere_data();
    void aMarkIsFoundAnywhere();
    void theSearchCanBeginAtTheMark();
    void theSearchBeginsWhereItIsTold();
    void theLongestMarkHasItsLength();
    void anyTextGivesWhatTheDefinitionGives();
};

void TestEndMark::aMarkIsFoundAnywhere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::newRow("empty") << QString() << -1;
    QTest::newRow("no mark") << QStringLiteral("OK\n") << -1;
    QTest::newRow("success alone") << success << 0;
    QTest::newRow("failure alone") << failure << 0;
    QTest::newRow("without a line of its own") << QStringLiteral("xCOMMAND FAILEDy") << 1;
    QTest::newRow("lower case") << QStringLiteral("command succeeded") << -1;
    QTest::newRow("lower verdict") << QStringLiteral("COMMAND failed") << -1;
    QTest::newRow("unfinished success") << QStringLiteral("COMMAND SUCCEEDE") << -1;
    QTest::newRow("unfinished failure") << QStringLiteral("COMMAND FAILE") << -1;
    QTest::newRow("two blanks") << QStringLiteral("COMMAND  FAILED") << -1;
    QTest::newRow("first of two") << QStringLiteral("a COMMAND FAILED COMMAND SUCCEEDED") << 2;
    QTest::newRow("after a false beginning") << QStringLiteral("COMMAND COMMAND FAILED") << 8;
}

void TestEndMark::aMarkIsFoundAnywhere()
{
    QFETCH(QString, text);
    QFETCH(int, position);
    QCOMPARE(Board::findEndMark(text, 0), position);
}

void TestEndMark::theSearchCanBeginAtTheMark()
{
    QCOMPARE(Board::findEndMark(QStringLiteral("ab") + success, 2), 2);
}

void TestEndMark::theSearchBeginsWhereItIsTold()
{
    QCOMPARE(Board::findEndMark(success + failure, 1), success.size());
    QCOMPARE(Board::findEndMark(success, 1), -1);
}

void TestEndMark::theLongestMarkHasItsLength()
{
    QCOMPARE(Board::longestEndMark, qMax(success.size(), failure.size()));
}

void TestEndMark::anyTextGivesWhatTheDefinitionGives()
{
    const QStringList pieces{QStringLiteral("COMMAND "), QStringLiteral("SUCCEEDED"),
                             QStringLiteral("FAILED"),   QStringLiteral("COMMAND"),
                             QStringLiteral(" "),        QStringLiteral("SUCC"),
                             QStringLiteral("\n"),       QStringLiteral("x")};
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        QString text;
        for (unsigned count = random() % 12; count > 0; --count) {
            text += pieces.at(static_cast<int>(random() % unsigned(pieces.size())));
        }
        QCOMPARE(Board::findEndMark(text, 0), findByDefinition(text));
    }
}

QTEST_APPLESS_MAIN(TestEndMark)

#include "tst_end_mark.moc"
