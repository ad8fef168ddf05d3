#include <foundation/Encoding.h>

#include <QTest>

#include <algorithm>
#include <utility>

using namespace Orvex;

class EncodingTest : public QObject
{
    Q_OBJECT

private slots:
    void eachByteIsOneCharacterAndComesBack();
    void bytesStayWhereverTheyAreCut();
    void anEmptyTextStaysEmpty();
    void aCharacterWithoutAByteIsAQuestionMark();
    void aTextThatIsGivenUpGivesTheSameBytes();
    void aTextThatIsGivenUpLeavesItsCopiesAlone();
    void bytesAreShownAsTheyWereMeant_data();
    void bytesAreShownAsTheyWereMeant();
};

void EncodingTest::eachByteIsOneCharacterAndComesBack()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    const QString text = fromAscii(bytes);
    QCOMPARE(text.size(), 256);
    for (int byte = 0; byte < 256; ++byte) {
        QCOMPARE(int(text.at(byte).unicode()), byte);
    }
    QCOMPARE(toAscii(text), bytes);
}

void EncodingTest::bytesStayWhereverTheyAreCut()
{
    const std::string bytes("41.5 \xc2\xb0"
                            "C\0\xff",
                            10);
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        const QString text = fromAscii(bytes.substr(0, cut)) + fromAscii(bytes.substr(cut));
        QCOMPARE(toAscii(text), bytes);
    }
}

void EncodingTest::anEmptyTextStaysEmpty()
{
    QVERIFY(fromAscii(std::string()).isEmpty());
    const QString empty;
    QVERIFY(toAscii(empty).empty());
    QVERIFY(getReadable(std::string()).isEmpty());
}

void EncodingTest::aCharacterWithoutAByteIsAQuestionMark()
{
    const QString euro(QChar(0x20ac));
    QCOMPARE(toAscii(euro), std::string("?"));
}

void EncodingTest::aTextThatIsGivenUpGivesTheSameBytes()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    QString text = fromAscii(bytes);
    QCOMPARE(toAscii(std::move(text)), bytes);
    QCOMPARE(toAscii(QString(QChar(0x20ac))), std::string("?"));
    QVERIFY(toAscii(QString()).empty());
}

void EncodingTest::aTextThatIsGivenUpLeavesItsCopiesAlone()
{
    QString text = fromAscii("COMMAND SUCCEEDED");
    const QString copy = text;
    QCOMPARE(toAscii(std::move(text)), std::string("COMMAND SUCCEEDED"));
    QCOMPARE(copy, QStringLiteral("COMMAND SUCCEEDED"));
}

void EncodingTest::bytesAreShownAsTheyWereMeant_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    const auto valid = [](const char* name, const QByteArray& bytes) {
        QTest::newRow(name) << bytes << QString::fromUtf8(bytes.data(), bytes.size());
    };
    const auto invalid = [](const char* name, const QByteArray& bytes) {
        QTest::newRow(name) << bytes << QString::fromLatin1(bytes.data(), bytes.size());
    };
    valid("ASCII", "board list\n");
    valid("degree sign", "41.5 \xc2\xb0"
                         "C");
    valid("NUL", QByteArray("a\0b", 3));
    valid("outside the first plane", "\xf0\x9f\x8c\x8d");
    valid("a replacement character that was sent", "\xef\xbf\xbd");
    invalid("one byte of Latin-1", "41.5 \xb0"
                                   "C");
    invalid("a sequence cut off at the end", "a\xe2\x82");
    invalid("a sequence cut off in the middle", "\xe2\x82"
                                                "a");
    invalid("a longer form than needed", "\xc0\x80");
    invalid("a surrogate", "\xed\xa0\x80");
    invalid("above the last character", "\xf4\x90\x80\x80");
    invalid("a single continuation", "\x80");
    invalid("valid and invalid together", "\xc2\xb0 \xb0");
}

void EncodingTest::bytesAreShownAsTheyWereMeant()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, shown);
    QCOMPARE(getReadable(bytes.toStdString()), shown);
}

QTEST_APPLESS_MAIN(EncodingTest)
#include "tst_encoding.moc"
