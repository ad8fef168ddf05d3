#include <foundation/ListCollection.h>
#include <foundation/Text.h>

#include <QStringList>
#include <QTest>

#include <type_traits>
#include <utility>

using namespace Orvex;

namespace
{

template <class T, class = void>
struct HasMatch : std::false_type {
};

template <class T>
struct HasMatch<
    T, std::void_t<decltype(std::declval<const Collection<T>&>().match(std::declval<T&>()))>>
    : std::true_type {
};

static_assert(HasMatch<std::string>::value);
static_assert(!HasMatch<int>::value);
static_assert(!HasMatch<int*>::value);

std::list<std::string> toList(const QStringList& texts)
{
    std::list<std::string> list;
    for (const QString& text : texts) {
        list.push_back(text.toStdString());
    }
    return list;
}

} // namespace

class MatchTest : public QObject
{
    Q_OBJECT

private slots:
    void oneParameterTakesTheFirstElement_data();
    void oneParameterTakesTheFirstElement();
    void twoParametersTakeTheFirstTwoElements_data();
    void twoParametersTakeTheFirstTwoElements();
    void aNullHandleMatchesNothing();
    void theSecondTryOverwritesTheFirst();
    void aLineIsTakenApartAsANameAndItsValues();
};

void MatchTest::oneParameterTakesTheFirstElement_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QString>("first");
    QTest::newRow("none") << QStringList() << false << "before";
    QTest::newRow("one") << QStringList{"a"} << true << "a";
    QTest::newRow("an empty one") << QStringList{""} << true << "";
    QTest::newRow("two") << QStringList{"a", "b"} << false << "a";
    QTest::newRow("three") << QStringList{"a", "b", "c"} << false << "a";
}

void MatchTest::oneParameterTakesTheFirstElement()
{
    QFETCH(QStringList, texts);
    QFETCH(bool, answer);
    QFETCH(QString, first);
    const std::list<std::string> list = toList(texts);
    std::string taken("before");
    QCOMPARE(ListCollection<std::string>(list).match(taken), answer);
    QCOMPARE(QString::fromStdString(taken), first);
}

void MatchTest::twoParametersTakeTheFirstTwoElements_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("none") << QStringList() << false << "before"
                          << "behind";
    QTest::newRow("one") << QStringList{"a"} << false << "a"
                         << "behind";
    QTest::newRow("two") << QStringList{"a", "b"} << true << "a"
                         << "b";
    QTest::newRow("three") << QStringList{"a", "b", "c"} << false << "a"
                           << "b";
}

void MatchTest::twoParametersTakeTheFirstTwoElements()
{
    QFETCH(QStringList, texts);
    QFETCH(bool, answer);
    QFETCH(QString, first);
    QFETCH(QString, second);
    const std::list<std::string> list = toList(texts);
    std::string takenFirst("before");
    std::string takenSecond("behind");
    QCOMPARE(ListCollection<std::string>(list).match(takenFirst, takenSecond), answer);
    QCOMPARE(QString::fromStdString(takenFirst), first);
    QCOMPARE(QString::fromStdString(takenSecond), second);
}

void MatchTest::aNullHandleMatchesNothing()
{
    const Collection<std::string> null;
    std::string first("before");
    std::string second("behind");
    QVERIFY(!null.match(first));
    QVERIFY(!null.match(first, second));
    QCOMPARE(first, std::string("before"));
    QCOMPARE(second, std::string("behind"));
}

void MatchTest::theSecondTryOverwritesTheFirst()
{
    const std::list<std::string> list{"1.0", "0.35"};
    const ListCollection<std::string> collection(list);
    std::string first;
    std::string second;
    QVERIFY(!collection.match(first));
    QVERIFY(collection.match(first, second));
    QCOMPARE(first, std::string("1.0"));
    QCOMPARE(second, std::string("0.35"));
}

void MatchTest::aLineIsTakenApartAsANameAndItsValues()
{
    std::string name;
    std::string rest;
    QVERIFY(getSplitted("VCore: 1.0 0.35", ": ").match(name, rest));
    QCOMPARE(name, std::string("VCore"));
    std::string first;
    std::string second;
    QVERIFY(getSplitted(rest, " ").match(first, second));
    QCOMPARE(first, std::string("1.0"));
    QCOMPARE(second, std::string("0.35"));
}

QTEST_APPLESS_MAIN(MatchTest)
#include "tst_match.moc"
