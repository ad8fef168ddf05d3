#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/KSBaseHandler.h>
#include <Board/Tamsa.h>
#include <foundation/Fatal.h>

#include <QTimer>

#include <functional>
#include <memory>

using Board::KSBaseHandler;
using Test::Bench;
using Test::CommandType;

namespace
{

using Operation = std::function<void(KSBaseHandler*)>;

const char cleanCounters[] =
    "Counters: 0 exception(s), 0 read32 timeout(s), 0 32bit word(s) read in error\n";

} // namespace

Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(Test::CommandType)

/// The typed operations on a board: what they send and how they judge the reply.
class TestBoardOperations : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void anOperationSendsItsCommandAndTellsItsVerdict_data();
    void anOperationSendsItsCommandAndTellsItsVerdict();
    void anOperationHasItsPlaceInTheQueue_data();
    void anOperationHasItsPlaceInTheQueue();
    void theModeIsTheFirstLineOfTheReply_data();
    void theModeIsTheFirstLineOfTheReply();
    void theForceBitIsRead_data();
    void theForceBitIsRead();
    void aReplyWithoutAForceBitMustNotBe();
    void aMonitoringReadReturnsTheWholeReply();
    void aSecondMonitoringReadGoesAwayEmptyHanded();
    void aFailedMonitoringReadIsTheLast();
    void theMonitoringIndexIsWrittenInDecimal();
    void aBitIsStoredOnlyWhenTheToolAgrees();
    void aBitGoesToTheBoardThatIsSelectedAtTheEnd();
    void withoutASelectionNothingIsStoredNorRead();
    void flashAndBitstreamAreJudgedDifferently();
    void aSetterIsJudgedByTwoLettersAnywhere();
    void aPathGoesToTheToolAsItIs_data();
    void aPathGoesToTheToolAsItIs();
    void theExportPathIsLeftOutWhenItIsEmpty();
    void constReadersAskTheBoard();
    void aBitstreamIsReallyLoaded();
    void aFlashIsReallyProgrammed();

private:
    void setScenario(const QString& faults)
    {
        bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis") +
                           faults);
        panel->getEngine()->refreshTamsaMap();
        bench->takeJournal();
        recorder->clear();
    }
    KSBaseHandler* engine() const { return panel->getEngine(); }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::ConsoleRecorder> recorder;
    std::unique_ptr<Test::Panel> panel;
};

void TestBoardOperations::init()
{
    bench = std::make_unique<Bench>();
    recorder = std::make_unique<Test::ConsoleRecorder>();
    bench->setScenario(Bench::board("Aurora", "selected = true") + Bench::board("Borealis"));
    panel = std::make_unique<Test::Panel>();
    bench->takeJournal();
    recorder->clear();
}

void TestBoardOperations::cleanup()
{
    bench->release();
    panel.reset();
    recorder.reset();
    bench.reset();
}

void TestBoardOperations::anOperationSendsItsCommandAndTellsItsVerdict_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("goodReply");
    QTest::addColumn<QString>("success");
    QTest::addColumn<QString>("failure");

    const auto add = [](const char* name, const Operation& operation, const char* command,
                        const QString& success, const char* failure,
                        const QString& goodReply = "OK\nCOMMAND SUCCEEDED\n") {
        QTest::newRow(name) << operation << command << goodReply << success << failure;
    };
    add(
        "mode", [](KSBaseHandler* on) { on->setMode("Master SPI + Vcc"); },
        "board set mode 'Master SPI + Vcc'", "Mode successfully set to Master SPI + Vcc",
        "Mode change failed");
    add(
        "reset on", [](KSBaseHandler* on) { on->setResetBit(true); }, "board set reset on",
        "Reset bit successfully set to on", "Reset failed");
    add(
        "reset off", [](KSBaseHandler* on) { on->setResetBit(false); }, "board set reset off",
        "Reset bit successfully set to off", "Reset failed");
    add(
        "clock on", [](KSBaseHandler* on) { on->setClockBit(true); }, "board set jtag_clock on",
        "Clock bit successfully set to on", "Setting of clock bit failed");
    add(
        "clock off", [](KSBaseHandler* on) { on->setClockBit(false); }, "board set jtag_clock off",
        "Clock bit successfully set to off", "Setting of clock bit failed");
    add(
        "force on", [](KSBaseHandler* on) { on->setForceBit(true); }, "board set force_bit on",
        "Force bit successfully set to on", "Setting of force bit failed");
    add(
        "force off", [](KSBaseHandler* on) { on->setForceBit(false); }, "board set force_bit off",
        "Force bit successfully set to off", "Setting of force bit failed");
    add(
        "select", [](KSBaseHandler* on) { on->select("Borealis"); }, "board select 1",
        "Board succesfully selected", "Selection failed");
    add(
        "flash", [](KSBaseHandler* on) { on->programFlash("a b.ksb"); },
        "board spi flash program a b.ksb", "Program flash memory succeeded",
        "Program flash memory failed", "COMMAND SUCCEEDED\n");
    add(
        "load", [](KSBaseHandler* on) { on->sendBitstream("a b.ksb"); },
        "chip bitstream load a b.ksb", "Bitstream successfully sent", "Bitstream failed",
        QString(cleanCounters) + "COMMAND SUCCEEDED\n");
    add(
        "error handler", [](KSBaseHandler* on) { on->setErrorHandler("Text", "out file"); },
        "chip bitstream err_handler select Text outfilepath=out file",
        "Error handler successfully configured", "Error handler configuration failed");
}

void TestBoardOperations::anOperationSendsItsCommandAndTellsItsVerdict()
{
    QFETCH(Operation, operation);
    QFETCH(QString, command);
    QFETCH(QString, goodReply);
    QFETCH(QString, success);
    QFETCH(QString, failure);

    setScenario(Bench::reply(command, goodReply));
    operation(engine());
    QCOMPARE(bench->takeJournal(), QStringList({command}));
    QCOMPARE(recorder->takeLines(), QStringList({success}));

    setScenario(Bench::reply(command, "no\nCOMMAND FAILED\n"));
    operation(engine());
    QCOMPARE(bench->takeJournal(), QStringList({command}));
    QCOMPARE(recorder->takeLines(), QStringList({"E: " + failure}));
    QVERIFY(engine()->getCommandHandlers().isEmpty());
}

void TestBoardOperations::anOperationHasItsPlaceInTheQueue_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<CommandType>("type");
    const auto add = [](const char* name, const Operation& operation, CommandType type) {
        QTest::newRow(name) << operation << type;
    };
    add(
        "get mode", [](KSBaseHandler* on) { on->_getMode(); }, CommandType::Control);
    add(
        "get force bit", [](KSBaseHandler* on) { on->_getForceBit(); }, CommandType::Control);
    add(
        "get monitor", [](KSBaseHandler* on) { on->_getMonitor(0); }, CommandType::Monitor);
    add(
        "set mode", [](KSBaseHandler* on) { on->setMode("Jtag only"); }, CommandType::Control);
    add(
        "set reset", [](KSBaseHandler* on) { on->setResetBit(true); }, CommandType::Control);
    add(
        "set clock", [](KSBaseHandler* on) { on->setClockBit(true); }, CommandType::Control);
    add(
        "set force", [](KSBaseHandler* on) { on->setForceBit(true); }, CommandType::Control);
    add(
        "select", [](KSBaseHandler* on) { on->select("Aurora"); }, CommandType::Control);
    add(
        "flash", [](KSBaseHandler* on) { on->programFlash("x"); }, CommandType::Transfer);
    add(
        "load", [](KSBaseHandler* on) { on->sendBitstream("x"); }, CommandType::Transfer);
    add(
        "error handler", [](KSBaseHandler* on) { on->setErrorHandler("Text", ""); },
        CommandType::Control);
    add(
        "listing", [](KSBaseHandler* on) { on->refreshTamsaMap(); }, CommandType::Refresh);
}

void TestBoardOperations::anOperationHasItsPlaceInTheQueue()
{
    QFETCH(Operation, operation);
    QFETCH(CommandType, type);
    CommandType seen = CommandType::Invalid;
    connect(engine(), &KSBaseHandler::commandAdded, this,
            [&] { seen = engine()->getCommandHandlers().getFirst()->getCommandType(); });
    operation(engine());
    QCOMPARE(seen, type);
    disconnect(engine(), &KSBaseHandler::commandAdded, this, nullptr);
}

void TestBoardOperations::theModeIsTheFirstLineOfTheReply_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("mode");
    QTest::newRow("plain") << "Jtag only\nCOMMAND SUCCEEDED\n"
                           << "Jtag only";
    QTest::newRow("untrimmed") << "  Jtag  only \nCOMMAND SUCCEEDED\n"
                               << "  Jtag  only ";
    QTest::newRow("error") << "Error: no board\nCOMMAND FAILED\n"
                           << "Error: no board";
    QTest::newRow("mark alone") << "COMMAND SUCCEEDED\n"
                                << "COMMAND SUCCEEDED";
    QTest::newRow("empty line first") << "\nJtag only\nCOMMAND SUCCEEDED\n"
                                      << "";
    QTest::newRow("accents") << "M\u00e9moire \u00e0\nCOMMAND SUCCEEDED\n"
                             << "M\u00e9moire \u00e0";
}

void TestBoardOperations::theModeIsTheFirstLineOfTheReply()
{
    QFETCH(QString, reply);
    setScenario(Bench::reply("board get mode", reply));
    QTEST(QString::fromStdString(engine()->_getMode()), "mode");
    QCOMPARE(bench->takeJournal(), QStringList({"board get mode"}));
    QCOMPARE(recorder->getLines(), QStringList());
}

void TestBoardOperations::theForceBitIsRead_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("isSet");
    QTest::addColumn<QStringList>("lines");
    const QStringList silent;
    QTest::newRow("set") << "Forcebit is set\nCOMMAND SUCCEEDED\n" << true << silent;
    QTest::newRow("not set") << "Forcebit is not set\nCOMMAND SUCCEEDED\n" << false << silent;
    QTest::newRow("error") << "Error:  no   answer \nCOMMAND FAILED\n"
                           << false << QStringList{"E: no answer"};
    QTest::newRow("error and set") << "Forcebit is set\nError: late\nCOMMAND FAILED\n"
                                   << false << QStringList{"E: Forcebit is set"};
}

void TestBoardOperations::theForceBitIsRead()
{
    QFETCH(QString, reply);
    setScenario(Bench::reply("board get force_bit", reply));
    QTEST(engine()->_getForceBit(), "isSet");
    QTEST(recorder->getLines(), "lines");
    QCOMPARE(bench->takeJournal(), QStringList({"board get force_bit"}));
}

void TestBoardOperations::aReplyWithoutAForceBitMustNotBe()
{
    setScenario(Bench::reply("board get force_bit", "OK\nCOMMAND SUCCEEDED\n"));
    try {
        engine()->_getForceBit();
        QFAIL("a reply without a force bit was taken");
    } catch (const Orvex::Fatal& failure) {
        QVERIFY(QString::fromStdString(failure.getMessage()).contains("Should not be here"));
        QCOMPARE(failure.getFunction(), std::string("_getForceBit"));
        QCOMPARE(failure.getFile(), std::string("src/lib/Board/KSBaseHandler"));
    }
    QVERIFY(engine()->getCommandHandlers().isEmpty());
}

void TestBoardOperations::aMonitoringReadReturnsTheWholeReply()
{
    setScenario(Bench::reply("board monitor get 0", " VCore: 1.0 0.2\n\nCOMMAND SUCCEEDED\n"));
    QCOMPARE(engine()->_getMonitor(0), std::string(" VCore: 1.0 0.2\n\nCOMMAND SUCCEEDED\n"));
    QVERIFY(!engine()->isMonitoring());
    QCOMPARE(bench->takeJournal(), QStringList({"board monitor get 0"}));
}

void TestBoardOperations::aSecondMonitoringReadGoesAwayEmptyHanded()
{
    setScenario(bench->hold("board monitor get"));
    std::string second = "not read";
    bool wasMonitoring = false;
    QTimer::singleShot(0, this, [&] {
        QTRY_COMPARE(bench->count("board monitor get 0"), 1);
        wasMonitoring = engine()->isMonitoring();
        second = engine()->_getMonitor(0);
        bench->release();
    });
    const std::string first = engine()->_getMonitor(0);
    QVERIFY(wasMonitoring);
    QVERIFY(!first.empty());
    QCOMPARE(second, std::string());
    QCOMPARE(bench->takeJournal(), QStringList({"board monitor get 0"}));
    QVERIFY(!engine()->isMonitoring());
}

void TestBoardOperations::aFailedMonitoringReadIsTheLast()
{
    connect(engine(), &KSBaseHandler::commandAdded, this,
            [] { throw Orvex::Fatal("out of order"); });
    QVERIFY_EXCEPTION_THROWN(engine()->_getMonitor(0), Orvex::Fatal);
    disconnect(engine(), &KSBaseHandler::commandAdded, this, nullptr);
    QVERIFY(engine()->isMonitoring());
    bench->takeJournal();
    QCOMPARE(engine()->_getMonitor(0), std::string());
    QCOMPARE(bench->takeJournal(), QStringList());
}

void TestBoardOperations::theMonitoringIndexIsWrittenInDecimal()
{
    engine()->_getMonitor(18446744073709551615UL);
    QCOMPARE(bench->takeJournal(), QStringList({"board monitor get 18446744073709551615"}));
}

void TestBoardOperations::aBitIsStoredOnlyWhenTheToolAgrees()
{
    engine()->setResetBit(true);
    engine()->setClockBit(false);
    QVERIFY(engine()->getResetBit());
    QVERIFY(!engine()->getClockBit());
    setScenario(Bench::reply("board set", "no\nCOMMAND FAILED\n"));
    engine()->setResetBit(false);
    engine()->setClockBit(true);
    QVERIFY(engine()->getResetBit());
    QVERIFY(!engine()->getClockBit());
}

void TestBoardOperations::aBitGoesToTheBoardThatIsSelectedAtTheEnd()
{
    setScenario(bench->hold("board set reset"));
    QTimer::singleShot(0, this, [this] {
        QTRY_COMPARE(bench->count("board set reset on"), 3);
        QTimer::singleShot(0, this, [this] { bench->release(); });
        engine()->select("Borealis");
    });
    engine()->setResetBit(true);
    QVERIFY(!engine()->getTamsa("Aurora")->getResetBit());
    QVERIFY(engine()->getTamsa("Borealis")->getResetBit());
}

void TestBoardOperations::withoutASelectionNothingIsStoredNorRead()
{
    setScenario(Bench::reply("board list", "- 0x534B1 Aurora\n- 0x534B2 Borealis\n"
                                           "COMMAND SUCCEEDED\n"));
    engine()->refreshTamsaMap();
    recorder->clear();
    QCOMPARE(engine()->getSelectedTamsa(), nullptr);
    QVERIFY(!engine()->getResetBit());
    QVERIFY(!engine()->getClockBit());
    engine()->setResetBit(true);
    engine()->setClockBit(true);
    QCOMPARE(recorder->getLines(),
             QStringList({"Reset bit successfully set to on", "Clock bit successfully set to on"}));
    QVERIFY(!engine()->getTamsa("Aurora")->getResetBit());
    QVERIFY(!engine()->getTamsa("Borealis")->getResetBit());
}

void TestBoardOperations::flashAndBitstreamAreJudgedDifferently()
{
    setScenario(Bench::reply("board spi flash program", "OK\nCOMMAND FAILED\n") +
                Bench::reply("chip bitstream load", QString(cleanCounters) + "COMMAND FAILED\n"));
    engine()->programFlash("x");
    engine()->sendBitstream("x");
    QCOMPARE(recorder->takeLines(),
             QStringList({"E: Program flash memory failed", "Bitstream successfully sent"}));
    setScenario(Bench::reply("board spi flash program", "COMMAND SUCCEEDED\n") +
                Bench::reply("chip bitstream load", "OK\nCOMMAND SUCCEEDED\n"));
    engine()->programFlash("x");
    engine()->sendBitstream("x");
    QCOMPARE(recorder->takeLines(),
             QStringList({"Program flash memory succeeded", "E: Bitstream failed"}));
}

void TestBoardOperations::aSetterIsJudgedByTwoLettersAnywhere()
{
    setScenario(Bench::reply("board set", "some line\n  BOOKED\nCOMMAND FAILED\n"));
    engine()->setForceBit(true);
    QCOMPARE(recorder->getLines(), QStringList({"Force bit successfully set to on"}));
}

void TestBoardOperations::aPathGoesToTheToolAsItIs_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("blanks") << "/tmp/a  b c.ksb";
    QTest::newRow("quotes") << "/tmp/'a' \"b\".ksb";
    QTest::newRow("accents") << "/tmp/\u00e0 caf\u00e9 \u65e5.ksb";
    QTest::newRow("4,000 characters") << "/" + QString(3999, 'x');
}

void TestBoardOperations::aPathGoesToTheToolAsItIs()
{
    QFETCH(QString, path);
    engine()->sendBitstream(path.toStdString());
    engine()->programFlash(path.toStdString());
    QCOMPARE(bench->takeJournal(),
             QStringList({"chip bitstream load " + path, "board spi flash program " + path}));
}

void TestBoardOperations::theExportPathIsLeftOutWhenItIsEmpty()
{
    engine()->setErrorHandler("Text", "");
    engine()->setErrorHandler("Text", "out");
    QCOMPARE(bench->takeJournal(),
             QStringList({"chip bitstream err_handler select Text",
                          "chip bitstream err_handler select Text outfilepath=out"}));
}

void TestBoardOperations::constReadersAskTheBoard()
{
    const KSBaseHandler* const reader = engine();
    QCOMPARE(reader->getMode(), std::string("Jtag only"));
    QVERIFY(!reader->getForceBit());
    QVERIFY(!reader->getMonitor(0).empty());
    QCOMPARE(bench->takeJournal(),
             QStringList({"board get mode", "board get force_bit", "board monitor get 0"}));
}

void TestBoardOperations::aBitstreamIsReallyLoaded()
{
    const QString path = bench->writeFile("design \u00e9.ksb", QByteArray(1000, 'x'));
    engine()->sendBitstream(path.toStdString());
    QCOMPARE(recorder->takeLines(), QStringList({"Bitstream successfully sent"}));
    engine()->sendBitstream(path.toStdString() + ".gone");
    QCOMPARE(recorder->takeLines(), QStringList({"E: Bitstream failed"}));
}

void TestBoardOperations::aFlashIsReallyProgrammed()
{
    const QString path = bench->writeFile("design.ksb", QByteArray(1000, 'x'));
    engine()->programFlash(path.toStdString());
    QCOMPARE(recorder->takeLines(), QStringList({"Program flash memory succeeded"}));
    engine()->programFlash(path.toStdString() + ".gone");
    QCOMPARE(recorder->takeLines(), QStringList({"E: Program flash memory failed"}));
}

KESTOBOARD_TEST_MAIN(TestBoardOperations)

#include "tst_board_operations.moc"
