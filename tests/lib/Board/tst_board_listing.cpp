#include <Board/BoardListing.h>

#include <QtTest>

namespace
{

/// The boards of a reply, each as its name, led by "*" when it is the selected one.
QStringList parse(const QByteArray& reply)
{
    QStringList boards;
    for (const Board::ListedBoard& board : Board::parseBoardListing(reply.toStdString())) {
        boards += (board.isSelected ? QStringLiteral("*") : QString()) +
                  QString::fromUtf8(board.name.c_str());
    }
    return boards;
}

} // namespace

class TestBoardListing : public QObject
{
    Q_OBJECT

private slots:
    void aLineGivesABoardOrNothing_data();
    void aLineGivesABoardOrNothing();
    void theLinesKeepTheirOrder();
    void garbageGivesNoBoard();
    void aLongLineIsRead();
    void manyLinesAreRead();
};

void TestBoardListing::aLineGivesABoardOrNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QStringList>("boards");
    const QStringList none;
    QTest::newRow("no line") << QByteArray() << none;
    QTest::newRow("heading") << QByteArray("Boards:") << none;
    QTest::newRow("mark") << QByteArray("COMMAND SUCCEEDED") << none;
    QTest::newRow("plain") << QByteArray("- 0x534B0001 Aurora") << QStringList{"Aurora"};
    QTest::newRow("selected") << QByteArray("* 0x534B0001 Aurora") << QStringList{"*Aurora"};
    QTest::newRow("blanks before the star")
        << QByteArray(" \t * 0x534B0001 Aurora") << QStringList{"*Aurora"};
    QTest::newRow("star in the first token")
        << QByteArray("*0 0x534B0001 Aurora") << QStringList{"*Aurora"};
    QTest::newRow("star later") << QByteArray("0 * Aurora 0x534B") << QStringList{"Aurora 0x534B"};
    QTest::newRow("white space inside")
        << QByteArray("-\t0x534B0001   Aurora \t One\r") << QStringList{"Aurora One"};
    QTest::newRow("marker in lower case") << QByteArray("- 0x534b0001 Aurora") << none;
    QTest::newRow("marker with a capital X") << QByteArray("- 0X534B0001 Aurora") << none;
    QTest::newRow("marker in any token")
        << QByteArray("a b c d e f g h i 0x534B") << QStringList{"c d e f g h"};
    QTest::newRow("marker within a token")
        << QByteArray("a b c-0x534Bz") << QStringList{"c-0x534Bz"};
    QTest::newRow("six tokens of a name")
        << QByteArray("- 0x534B 1 2 3 4 5 6") << QStringList{"1 2 3 4 5 6"};
    QTest::newRow("seven tokens are cut")
        << QByteArray("- 0x534B 1 2 3 4 5 6 7") << QStringList{"1 2 3 4 5 6"};
    QTest::newRow("two tokens") << QByteArray("* 0x534B0001") << QStringList{"*"};
    QTest::newRow("one token") << QByteArray("0x534B0001") << QStringList{""};
    QTest::newRow("markup stays") << QByteArray("- 0x534B <b>a</b>") << QStringList{"<b>a</b>"};
    QTest::newRow("accents stay") << QByteArray("- 0x534B \u00e0\u00e9")
                                  << QStringList{"\u00e0\u00e9"};
    QTest::newRow("one character") << QByteArray("- 0x534B A") << QStringList{"A"};
}

void TestBoardListing::aLineGivesABoardOrNothing()
{
    QFETCH(QByteArray, line);
    QTEST(parse(line), "boards");
}

void TestBoardListing::theLinesKeepTheirOrder()
{
    QCOMPARE(parse("Boards:\n- 0x534B2 Borealis\n\n* 0x534B1 Aurora\n* 0x534B2 Borealis\nCOMMAND "
                   "SUCCEEDED\n"),
             QStringList({"Borealis", "*Aurora", "*Borealis"}));
}

void TestBoardListing::garbageGivesNoBoard()
{
    QByteArray garbage;
    for (int byte = 0; byte < 256; ++byte) {
        garbage += QByteArray(3, static_cast<char>(byte)) + (byte % 7 == 0 ? "\n" : " ");
    }
    QCOMPARE(parse(garbage), QStringList());
}

void TestBoardListing::aLongLineIsRead()
{
    const QByteArray line = "- 0x534B " + QByteArray(1 << 20, 'x') + " y";
    QCOMPARE(parse(line).size(), 1);
    QCOMPARE(parse(line).first().size(), (1 << 20) + 2);
}

void TestBoardListing::manyLinesAreRead()
{
    QByteArray reply;
    QStringList names;
    for (int number = 0; number < 10000; ++number) {
        names += QString("Board %1").arg(number);
        reply += "- 0x534B " + names.last().toUtf8() + "\n";
    }
    QCOMPARE(parse(reply), names);
}

QTEST_APPLESS_MAIN(TestBoardListing)

#include "tst_board_listing.moc"
