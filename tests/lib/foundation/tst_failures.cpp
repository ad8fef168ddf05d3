#include <foundation/Critical.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Fatal.h>
#include <foundation/InvalidRequest.h>
#include <foundation/Raise.h>

#include <QTest>

#include <exception>
#include <memory>
#include <type_traits>
#include <typeinfo>

using namespace Orvex;

static_assert(!std::is_base_of_v<std::exception, Exception>);
static_assert(std::is_base_of_v<Exception, Error>);
static_assert(std::is_base_of_v<Error, Critical>);
static_assert(std::is_base_of_v<Error, InternalError>);
static_assert(std::is_base_of_v<InternalError, FactoryFailed>);
static_assert(std::is_base_of_v<InternalError, InvalidRequest>);
static_assert(std::is_base_of_v<InternalError, Fatal>);
static_assert(!std::is_base_of_v<InternalError, Critical>);
static_assert(std::is_copy_constructible_v<Exception>);
static_assert(std::is_copy_constructible_v<Fatal>);

namespace
{

template <class E>
std::shared_ptr<Exception> make(const char* message)
{
    return std::make_shared<E>(message);
}

template <class E>
void throwLocated()
{
    raise(E("Broken"), "work", "src/lib/Board/Sample", 12);
}

struct Kind {
    const char* name;
    std::shared_ptr<Exception> (*make)(const char* message);
    void (*throwLocated)();
};

template <class E>
Kind describeKind(const char* name)
{
    return Kind{name, &make<E>, &throwLocated<E>};
}

const Kind locatedKinds[] = {
    describeKind<Error>("Orvex::Error"),
    describeKind<Critical>("Orvex::Critical"),
    describeKind<InternalError>("Orvex::InternalError"),
    describeKind<FactoryFailed>("Orvex::FactoryFailed"),
    describeKind<InvalidRequest>("Orvex::InvalidRequest"),
    describeKind<Fatal>("Orvex::Fatal"),
};

void addKinds()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < int(std::size(locatedKinds)); ++kind) {
        QTest::newRow(locatedKinds[kind].name) << kind;
    }
}

} // namespace

class FailuresTest : public QObject
{
    Q_OBJECT

private slots:
    void theMessageIsThatOfTheConstructor_data() { addKinds(); }
    void theMessageIsThatOfTheConstructor();
    void theLabelIsTheNameOfTheClass_data() { addKinds(); }
    void theLabelIsTheNameOfTheClass();
    void aFailureIsThrownAsItsExactClassWithItsLocation_data() { addKinds(); }
    void aFailureIsThrownAsItsExactClassWithItsLocation();
    void theRootHasAMessageAndALabel();
    void locateAndWithReturnTheSameObject();
    void twoDetailsAreKeptInOrder();
    void detailsTakeEveryTypeThatHasALabel();
    void aCopyKeepsDetailsAndLocation();
    void aThrownFatalKeepsItsDetails();
    void aCopyKeepsTheMomentOfTheFirst();
    void theReportOfAnInternalErrorIsOneLine_data();
    void theReportOfAnInternalErrorIsOneLine();
    void onlyAnInternalErrorReportsItsLocation();
    void theSteppedFormSetsTheReportIn();
};

void FailuresTest::theMessageIsThatOfTheConstructor()
{
    QFETCH(int, kind);
    QCOMPARE(locatedKinds[kind].make("Empty name")->getMessage(), std::string("Empty name"));
}

void FailuresTest::theLabelIsTheNameOfTheClass()
{
    QFETCH(int, kind);
    QCOMPARE(locatedKinds[kind].make("Empty name")->_getLabel(),
             std::string(locatedKinds[kind].name));
}

void FailuresTest::aFailureIsThrownAsItsExactClassWithItsLocation()
{
    QFETCH(int, kind);
    const std::shared_ptr<Exception> expected = locatedKinds[kind].make("Broken");
    try {
        locatedKinds[kind].throwLocated();
        QFAIL("nothing was thrown");
    } catch (const Error& failure) {
        const Exception& caught = failure;
        const Exception& wanted = *expected;
        QVERIFY(typeid(caught) == typeid(wanted));
        QCOMPARE(failure.Exception::getMessage(), std::string("Broken"));
        QCOMPARE(failure.getFunction(), std::string("work"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/Sample"));
        QCOMPARE(failure.getLine(), 12UL);
    }
}

void FailuresTest::theRootHasAMessageAndALabel()
{
    const Exception failure("Plain");
    QCOMPARE(failure.getMessage(), std::string("Plain"));
    QCOMPARE(failure._getLabel(), std::string("Orvex::Exception"));
    QVERIFY(failure.getDetailNames().empty());
    QVERIFY(failure.getDetailValues().empty());
}

void FailuresTest::locateAndWithReturnTheSameObject()
{
    Fatal failure("Broken");
    QCOMPARE(&failure.with("name", std::string("value")), &failure);
    QCOMPARE(&failure.locate("work", "file", 1), static_cast<Error*>(&failure));
}

void FailuresTest::twoDetailsAreKeptInOrder()
{
    Fatal failure("Broken");
    failure.with("second in the alphabet", std::string("one")).with("first", std::string("two"));
    QCOMPARE(failure.getDetailNames(), (std::list<std::string>{"second in the alphabet", "first"}));
    QCOMPARE(failure.getDetailValues(), (std::list<std::string>{"one", "two"}));
}

void FailuresTest::detailsTakeEveryTypeThatHasALabel()
{
    Fatal failure("Broken");
    failure.with("text", std::string("board list"))
        .with("number", -7)
        .with("count", 8UL)
        .with("path", QString::fromUtf8("/home/é"));
    QCOMPARE(failure.getDetailValues(),
             (std::list<std::string>{"board list", "-7", "8", "/home/é"}));
}

void FailuresTest::aCopyKeepsDetailsAndLocation()
{
    Fatal failure("Broken");
    failure.with("command", std::string("board list")).locate("work", "file", 3);
    const Fatal copy(failure);
    QCOMPARE(copy.getDetailNames(), std::list<std::string>{"command"});
    QCOMPARE(copy.getDetailValues(), std::list<std::string>{"board list"});
    QCOMPARE(copy.getFunction(), std::string("work"));
    QCOMPARE(copy.getFile(), std::string("file"));
    QCOMPARE(copy.getLine(), 3UL);
    QCOMPARE(copy.getMessage(), failure.getMessage());
}

void FailuresTest::aThrownFatalKeepsItsDetails()
{
    try {
        raise(Fatal("Empty result").with("command", std::string("board list")), "executeCommand",
              "src/lib/Board/KSBaseHandler", 212);
        QFAIL("nothing was thrown");
    } catch (const Exception& failure) {
        QCOMPARE(failure.getMessage(),
                 std::string("Empty result (command: board list) "
                             "[executeCommand, src/lib/Board/KSBaseHandler:212]"));
        QCOMPARE(failure._getLabel(), std::string("Orvex::Fatal"));
    }
}

void FailuresTest::aCopyKeepsTheMomentOfTheFirst()
{
    const Tracker::Clock::time_point before = Tracker::Clock::now();
    const Error failure("Broken");
    const Error copy(failure);
    QVERIFY(failure.getTracker().getTime() >= before);
    QVERIFY(copy.getTracker().getTime() == failure.getTracker().getTime());
}

void FailuresTest::theReportOfAnInternalErrorIsOneLine_data()
{
    QTest::addColumn<int>("details");
    QTest::addColumn<bool>("located");
    QTest::addColumn<QString>("report");
    QTest::newRow("message only") << 0 << false << "Broken";
    QTest::newRow("a detail") << 1 << false << "Broken (d1: v1)";
    QTest::newRow("two details") << 2 << false << "Broken (d1: v1, d2: v2)";
    QTest::newRow("a location") << 0 << true << "Broken [work, file:9]";
    QTest::newRow("everything") << 2 << true << "Broken (d1: v1, d2: v2) [work, file:9]";
}

void FailuresTest::theReportOfAnInternalErrorIsOneLine()
{
    QFETCH(int, details);
    QFETCH(bool, located);
    QFETCH(QString, report);
    Fatal failure("Broken");
    for (int detail = 1; detail <= details; ++detail) {
        const std::string number = std::to_string(detail);
        failure.with("d" + number, "v" + number);
    }
    if (located) {
        failure.locate("work", "file", 9);
    }
    QCOMPARE(QString::fromStdString(failure.getMessage()), report);
}

void FailuresTest::onlyAnInternalErrorReportsItsLocation()
{
    Critical failure("Unable to write file ksbase.log");
    failure.locate("KSBaseHandler", "src/lib/Board/KSBaseHandler", 80);
    QCOMPARE(failure.getMessage(), std::string("Unable to write file ksbase.log"));
    QCOMPARE(failure.getMessage(0), std::string("Unable to write file ksbase.log"));
}

void FailuresTest::theSteppedFormSetsTheReportIn()
{
    const Exception plain("Plain");
    QCOMPARE(plain.getMessage(0), std::string("Plain"));
    QCOMPARE(plain.getMessage(2), std::string("    Plain"));
    InvalidRequest located("Already running");
    located.locate("work", "file", 9);
    QCOMPARE(located.getMessage(1), std::string("  Already running [work, file:9]"));
}

QTEST_APPLESS_MAIN(FailuresTest)
#include "tst_failures.moc"
