#include "Walk.h"

#include <foundation/Debug.h>
#include <foundation/FromCollection.h>
#include <foundation/Label.h>
#include <foundation/Text.h>

#include <QTest>
#include <QThread>

#include <limits>
#include <memory>
#include <set>
#include <vector>

using namespace Orvex;

namespace
{

QStringList getPieces(const Collection<std::string>& collection)
{
    QStringList pieces;
    for (Locator<std::string> locator = collection.getLocator(); locator.isValid();
         locator.progress()) {
        pieces << QString::fromStdString(locator.getCurrent());
    }
    return pieces;
}

struct Sample {
};

} // namespace

class TextTest : public QObject
{
    Q_OBJECT

private slots:
    void aTextOfQtKeepsEveryCharacter_data();
    void aTextOfQtKeepsEveryCharacter();
    void aNumberIsWrittenInDecimal();
    void aStringIsItsOwnLabel();
    void labelsAreMadeOnAnyThread();
    void aTextIsSplitAtEachSeparator_data();
    void aTextIsSplitAtEachSeparator();
    void piecesKeepNulCharacters();
    void piecesOutliveTheTextAndTheHandle();
    void piecesAreWalkedInEveryWay();
    void aLongTextIsSplitWhateverItsSeparator();
    void aTextStartsWithItsPrefix_data();
    void aTextStartsWithItsPrefix();
    void theAlphabeticalOrderIsStrict();
    void randomValuesDiffer();
    void aClassNameIsMadeReadable_data();
    void aClassNameIsMadeReadable();
    void aClassNameOfAnotherThreadLeavesOursAlone();
    void aLabelHoldsItsText();
    void debugModeIsOffUntilItIsSet();
};

void TextTest::aTextOfQtKeepsEveryCharacter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("label");
    QTest::newRow("empty") << QString("") << QByteArray();
    QTest::newRow("null") << QString() << QByteArray();
    QTest::newRow("leading blanks") << QString("  board list ") << QByteArray("  board list ");
    QTest::newRow("line ends") << QString("a\r\nb\n") << QByteArray("a\r\nb\n");
    QTest::newRow("accents") << QString(QChar(0xe9)) << QByteArray("\xc3\xa9");
    QTest::newRow("NUL") << QString::fromLatin1("a\0b", 3) << QByteArray("a\0b", 3);
    QTest::newRow("outside the first plane")
        << QString::fromUtf8("\xf0\x9f\x8c\x8d") << QByteArray("\xf0\x9f\x8c\x8d");
}

void TextTest::aTextOfQtKeepsEveryCharacter()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, label);
    QCOMPARE(QByteArray::fromStdString(getLabel(text)), label);
}

void TextTest::aNumberIsWrittenInDecimal()
{
    QCOMPARE(getLabel(-1), std::string("-1"));
    QCOMPARE(getLabel(0), std::string("0"));
    QCOMPARE(getLabel(std::numeric_limits<int>::min()), std::string("-2147483648"));
    QCOMPARE(getLabel(std::numeric_limits<int>::max()), std::string("2147483647"));
    QCOMPARE(getLabel(0UL), std::string("0"));
    QCOMPARE(getLabel(std::numeric_limits<unsigned long>::max()),
             std::string("18446744073709551615"));
}

void TextTest::aStringIsItsOwnLabel()
{
    const std::string text("a\0 \xb0", 4);
    QCOMPARE(getLabel(text), text);
}

void TextTest::labelsAreMadeOnAnyThread()
{
    std::string label;
    const std::unique_ptr<QThread> thread(
        QThread::create([&label] { label = getLabel(QString("reply")) + getLabel(4); }));
    thread->start();
    thread->wait();
    QCOMPARE(label, std::string("reply4"));
}

void TextTest::aTextIsSplitAtEachSeparator_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QStringList>("pieces");
    QTest::newRow("an empty line between two") << "a\n\nb"
                                               << "\n"
                                               << QStringList{"a", "", "b"};
    QTest::newRow("a line end at the end") << "a\nb\n"
                                           << "\n"
                                           << QStringList{"a", "b", ""};
    QTest::newRow("a line end at the start") << "\na"
                                             << "\n"
                                             << QStringList{"", "a"};
    QTest::newRow("separators only") << "\n\n"
                                     << "\n"
                                     << QStringList{"", "", ""};
    QTest::newRow("no separator in the text") << "abc"
                                              << "\n"
                                              << QStringList{"abc"};
    QTest::newRow("an empty text") << ""
                                   << "\n"
                                   << QStringList{""};
    QTest::newRow("a long separator") << "VCore: 1.0: x"
                                      << ": " << QStringList{"VCore", "1.0", "x"};
    QTest::newRow("half a separator at the end") << "a: b:"
                                                 << ": " << QStringList{"a", "b:"};
    QTest::newRow("a separator that overlaps itself") << "aaaaa"
                                                      << "aa" << QStringList{"", "", "a"};
    QTest::newRow("a separator longer than the text") << "a"
                                                      << "abc" << QStringList{"a"};
    QTest::newRow("the text is the separator") << "abc"
                                               << "abc" << QStringList{"", ""};
    QTest::newRow("an empty separator") << "abc"
                                        << "" << QStringList{"abc"};
    QTest::newRow("nothing by nothing") << ""
                                        << "" << QStringList{""};
}

void TextTest::aTextIsSplitAtEachSeparator()
{
    QFETCH(QString, text);
    QFETCH(QString, separator);
    QFETCH(QStringList, pieces);
    const Collection<std::string> collection =
        getSplitted(text.toStdString(), separator.toStdString());
    QCOMPARE(getPieces(collection), pieces);
    QCOMPARE(collection.getCount(), static_cast<unsigned long>(pieces.size()));
}

void TextTest::piecesKeepNulCharacters()
{
    const Collection<std::string> collection = getSplitted(std::string("a\0b\nc", 5), "\n");
    QCOMPARE(collection.getFirst(), std::string("a\0b", 3));
    QCOMPARE(collection.getLast(), std::string("c"));
    QVERIFY(getSplitted(std::string("a\0b", 3), std::string(1, '\0')).hasCount(2));
}

void TextTest::piecesOutliveTheTextAndTheHandle()
{
    Locator<std::string> locator;
    {
        std::string text("a long line that is not stored within the string\nb");
        locator = getSplitted(text, "\n").getLocator();
        text.assign(text.size(), 'x');
    }
    Locator<std::string> copy(locator);
    locator = Locator<std::string>();
    QCOMPARE(walk(copy), QString("a long line that is not stored within the string,b"));
}

void TextTest::piecesAreWalkedInEveryWay()
{
    const Collection<std::string> pieces = getSplitted("a\nb\nc", "\n");
    QCOMPARE(walk(pieces.getReverseLocator()), QString("c,b,a"));
    QCOMPARE(pieces.getAt(1), std::string("b"));
    QVERIFY(pieces.hasCount(3));
    QVERIFY(!pieces.isEmpty());
    QVERIFY(!FromCollection<std::string>(pieces, "b").isEmpty());
}

void TextTest::aLongTextIsSplitWhateverItsSeparator()
{
    // Compared as a whole at each position, the separator would take minutes.
    const std::string separator = std::string(500000, 'a') + "b";
    const std::string text(2000000, 'a');
    QVERIFY(getSplitted(text, separator).hasCount(1));
    QVERIFY(getSplitted(std::string(100000, 'a'), "a").hasCount(100001));
    QVERIFY(getSplitted(text + separator + text, separator).hasCount(2));
}

void TextTest::aTextStartsWithItsPrefix_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<bool>("answer");
    QTest::newRow("empty text") << ""
                                << "#" << false;
    QTest::newRow("comment") << "# note"
                             << "#" << true;
    QTest::newRow("the prefix itself") << "#"
                                       << "#" << true;
    QTest::newRow("behind a blank") << " #"
                                    << "#" << false;
    QTest::newRow("half of it") << "ab"
                                << "abc" << false;
    QTest::newRow("other case") << "Abc"
                                << "a" << false;
}

void TextTest::aTextStartsWithItsPrefix()
{
    QFETCH(QString, text);
    QFETCH(QString, prefix);
    QFETCH(bool, answer);
    QCOMPARE(startsWith(text.toStdString(), prefix.toStdString()), answer);
}

void TextTest::theAlphabeticalOrderIsStrict()
{
    const std::vector<std::string> ordered{"", "a", "a b", "ab", "b", "\xc3\xa9"};
    for (std::size_t first = 0; first < ordered.size(); ++first) {
        for (std::size_t second = 0; second < ordered.size(); ++second) {
            QCOMPARE(isAlphaLess(ordered[first], ordered[second]), first < second);
        }
    }
}

void TextTest::randomValuesDiffer()
{
    std::set<quint64> values;
    quint64 bits = 0;
    for (int draw = 0; draw < 1000; ++draw) {
        const quint64 value = getRandomValue();
        values.insert(value);
        bits |= value;
    }
    QCOMPARE(values.size(), std::size_t(1000));
    QCOMPARE(bits, std::numeric_limits<quint64>::max());
}

void TextTest::aClassNameIsMadeReadable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("readable");
    QTest::newRow("class") << QString(typeid(Label).name()) << "Orvex::Label";
    QTest::newRow("template") << QString(typeid(Locator<int>).name()) << "Orvex::Locator<int>";
    QTest::newRow("hidden class") << QString(typeid(Sample).name())
                                  << "(anonymous namespace)::Sample";
    QTest::newRow("no class name") << "no class name"
                                   << "no class name";
    QTest::newRow("empty") << ""
                           << "";
}

void TextTest::aClassNameIsMadeReadable()
{
    QFETCH(QString, name);
    QFETCH(QString, readable);
    QCOMPARE(QString::fromStdString(getExternalName(name.toStdString())), readable);
}

void TextTest::aClassNameOfAnotherThreadLeavesOursAlone()
{
    const std::string& name = getExternalName(typeid(Label).name());
    const std::unique_ptr<QThread> thread(
        QThread::create([] { getExternalName(typeid(Locator<int>).name()); }));
    thread->start();
    thread->wait();
    QCOMPARE(name, std::string("Orvex::Label"));
}

void TextTest::aLabelHoldsItsText()
{
    QCOMPARE(Label::create("text").getText(), std::string("text"));
    QCOMPARE(getClassLabel(typeid(Label)).getText(), std::string("Orvex::Label"));
}

void TextTest::debugModeIsOffUntilItIsSet()
{
    QVERIFY(!isDebug());
    setDebug(true);
    QVERIFY(isDebug());
    setDebug(false);
    QVERIFY(!isDebug());
}

QTEST_APPLESS_MAIN(TextTest)
#include "tst_text.moc"
