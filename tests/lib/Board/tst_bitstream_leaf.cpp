#include "PageProbe.h"

#include "support/TestMain.h"

#include <Board/BitstreamLeaf.h>
#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Fatal.h>
#include <foundation/InvalidRequest.h>
#include <foundation/Raise.h>

#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>

#include <functional>
#include <stdexcept>

using Board::BitstreamLeaf;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::doInNextWait;
using Test::doOnceReceived;
using Test::FragilePanel;
using Test::getNamed;
using Test::Panel;
using Test::setScenario;
using Test::takeCommands;

namespace
{

const QString key = "recentLoadList";
const QString setHandler = "chip bitstream err_handler select Text";
const QString load = "chip bitstream load ";
const QString program = "board spi flash program ";
const QString configured = "Error handler successfully configured";

QString boardA(const QString& moreKeys = {})
{
    return Bench::board("KS-Dev A", "selected = true\n" + moreKeys);
}

// The mouse button goes down and is not let go.
void press(const QObject& root, const char* name)
{
    QTest::mousePress(getNamed<QPushButton>(root, name), Qt::LeftButton);
}

void browseTo(const QObject& root, const QString& path)
{
    getNamed<QToolButton>(root, "browseButton")->click();
    getNamed<Zandu::FileSystemBrowser>(root, "fileSystemBrowser")->setSelectedFile(path);
}

QListWidget* getRecent(const QObject& root)
{
    return getNamed<QListWidget>(root, "recentWidget");
}

QStringList getRows(const QObject& root)
{
    QStringList paths;
    const QListWidget& list = *getRecent(root);
    for (int row = 0; row < list.count(); ++row) {
        paths += list.item(row)->data(Qt::UserRole).toString();
    }
    return paths;
}

QStringList getStored()
{
    return QSettings().value(key).toStringList();
}

void store(const QStringList& paths)
{
    QSettings().setValue(key, paths);
}

// Files of the working directory: 0.ksb, 1.ksb and so on.
QStringList writeFiles(const Bench& bench, int count)
{
    QStringList paths;
    for (int number = 0; number < count; ++number) {
        paths += bench.writeFile(QString("%1.ksb").arg(number), "bits");
    }
    return paths;
}

// Fails in the middle of an operation of the engine: when it says that text.
class Saboteur : public QObject
{
public:
    Saboteur(const std::string& text, const std::function<void()>& failure)
    {
        connect(Orvex::console, &Orvex::Console::messageAdded, this,
                [text, failure](const Orvex::Message& message) {
                    if (message.text == text) {
                        failure();
                    }
                });
    }
};

} // namespace

class TestBitstreamLeaf : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings().clear(); }
    void cleanup();

    void theFormStandsInItsGrid();
    void theSlotsStandInTheirOrder();
    void theButtonsActWhenTheyArePressed_data();
    void theButtonsActWhenTheyArePressed();
    void thePageKnowsWhatItsChooserShows();
    void initializingEmptiesTheExportPathAlone();
    void noSlotActsWhileThePageIsInitialized_data();
    void noSlotActsWhileThePageIsInitialized();
    void aChangedExportPathIsNoAction();
    void theSlotOfTheExportPathSetsTheErrorHandler();

    void withoutASelectedRowThePersonIsWarned_data();
    void withoutASelectedRowThePersonIsWarned();
    void withDisabledPageIndicesNothingIsChosen();
    void twoSelectedRowsAreFatalAndChangeNothing();
    void withoutASelectionTheBrowsersOwnPathIsTaken();
    void aBitstreamIsLoadedWithItsErrorHandlerBefore();
    void theErrorHandlerIsSetBeforeEachLoad();
    void theExportPathGoesWithTheErrorHandler();
    void programmingTheFlashSetsNoErrorHandler();
    void resetAndLoadIsAResetPulseAndALoad();
    void aPathReachesTheToolAsItIs_data();
    void aPathReachesTheToolAsItIs();

    void anEleventhFilePushesTheOldestOut_data();
    void anEleventhFilePushesTheOldestOut();
    void aFileOfTheListMovesToItsFront_data();
    void aFileOfTheListMovesToItsFront();
    void aListThatIsTooLongIsCut();
    void filesThatHaveGoneStayInTheList();
    void loadingFromTheRecentListLeavesItsRows();
    void loadingFromTheBrowserRebuildsTheRows();
    void theListIsWrittenAtOnce();

    void aFailedTransferKeepsTheFileInTheList_data();
    void aFailedTransferKeepsTheFileInTheList();
    void aThrowingTransferIsReportedAndTheDepthRestored_data();
    void aThrowingTransferIsReportedAndTheDepthRestored();
    void aThrowingErrorHandlerLeavesTheSlot();
    void aFailedResetLetsTheLoadGoOn();
    void aThrowingResetLetsNoLoadHappen();
    void withoutABoardTheCommandsAreSentAllTheSame();
    void aSecondPressInTheWaitOfTheFirstIsQueuedBehindIt();
    void aBoardThatVanishesInTheWaitOfALoadIsNoHarm();
    void anEmptyReplyIsAFailedLoad();
    void aReplyOfTenMegabytesIsJudgedByItsLine();
    void hidingThePageInTheWaitOfALoadLetsItFinish();
    void withoutAFolioOnlyTheListIsKept();
    void theWindowMayBeDeletedInAWait_data();
    void theWindowMayBeDeletedInAWait();
};

void TestBitstreamLeaf::cleanup()
{
    Zandu::application->leafIndexDisabled = false;
    while (Orvex::console->getDepth() != 0) {
        Orvex::console->unindent();
    }
}

void TestBitstreamLeaf::theFormStandsInItsGrid()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<BitstreamLeaf>();
    QCOMPARE(Test::describeGrid(leaf), QStringList({
                                           "0,0 1x6 Board::BrowseFolio browseFolio",
                                           "2,0 1x6 QLabel 'Error handler<hr />'",
                                           "3,0 1x1 QLabel 'Export to'",
                                           "3,1 1x5 QLineEdit exportLineEdit",
                                           "5,2 1x1 right QPushButton 'Reset'",
                                           "5,3 1x1 right QPushButton 'Load'",
                                           "5,4 1x1 right QPushButton 'Reset && Load'",
                                           "5,5 1x1 right QPushButton 'Program flash memory'",
                                       }));
    QCOMPARE(Test::describeMetrics(leaf), QStringList({"spacing: 8", "column stretch 2: 1",
                                                       "row minimum 1: 20", "row minimum 4: 20"}));
    QCOMPARE(Test::getMargins(leaf), QList<int>({0, 0, 0, 0}));
    QCOMPARE(getNamed<QLineEdit>(leaf, "exportLineEdit")->text(), QString());
}

void TestBitstreamLeaf::theSlotsStandInTheirOrder()
{
    QCOMPARE(Test::describeMethods(BitstreamLeaf::staticMetaObject),
             QStringList({"private slot onLoad()", "private slot onReset()",
                          "private slot onResetLoad()", "private slot onPathChange()",
                          "private slot onProgramFlash()"}));
}

void TestBitstreamLeaf::theButtonsActWhenTheyArePressed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("commands");
    const QStringList pulse = {"board set reset on", "board set reset off"};
    QTest::newRow("Reset") << "resetButton" << pulse;
    QTest::newRow("Load") << "loadButton" << QStringList({setHandler, load + "PATH"});
    QTest::newRow("Reset && Load")
        << "resetLoadButton" << pulse + QStringList({setHandler, load + "PATH"});
    QTest::newRow("Program flash memory") << "programFlashButton" << QStringList(program + "PATH");
}

void TestBitstreamLeaf::theButtonsActWhenTheyArePressed()
{
    QFETCH(QString, name);
    QFETCH(QStringList, commands);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    const QString path = writeFiles(bench, 1).first();
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);

    auto* button = panel.getFolio()->findChild<QPushButton*>(name);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(takeCommands(&bench), commands.replaceInStrings("PATH", path));
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestBitstreamLeaf::thePageKnowsWhatItsChooserShows()
{
    Bench bench;
    Panel panel;
    const auto& leaf = *panel.find<BitstreamLeaf>();
    QVERIFY(leaf.isSelectingRecent());
    QVERIFY(!leaf.isBrowsing());
    getNamed<QToolButton>(leaf, "browseButton")->click();
    QVERIFY(!leaf.isSelectingRecent());
    QVERIFY(leaf.isBrowsing());
    Zandu::application->leafIndexDisabled = true;
    QVERIFY(!leaf.isSelectingRecent());
    QVERIFY(!leaf.isBrowsing());
}

void TestBitstreamLeaf::initializingEmptiesTheExportPathAlone()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* leaf = panel.find<BitstreamLeaf>();
    getNamed<QLineEdit>(*leaf, "exportLineEdit")->setText("/tmp/errors");
    takeCommands(&bench);
    leaf->initialize();
    QCOMPARE(getNamed<QLineEdit>(*leaf, "exportLineEdit")->text(), QString());
    QCOMPARE(takeCommands(&bench), QStringList());
    // The slots work again.
    press(*leaf, "resetButton");
    QCOMPARE(takeCommands(&bench).size(), 2);

    // The pages' own initialization leaves this page alone.
    getNamed<QLineEdit>(*leaf, "exportLineEdit")->setText("/tmp/errors");
    panel.getFolio()->initialize();
    QCOMPARE(getNamed<QLineEdit>(*leaf, "exportLineEdit")->text(), QString("/tmp/errors"));
}

void TestBitstreamLeaf::noSlotActsWhileThePageIsInitialized_data()
{
    QTest::addColumn<QByteArray>("slot");
    for (const char* slot : {SLOT(onLoad()), SLOT(onReset()), SLOT(onResetLoad()),
                             SLOT(onPathChange()), SLOT(onProgramFlash())}) {
        QTest::newRow(slot) << QByteArray(slot);
    }
}

void TestBitstreamLeaf::noSlotActsWhileThePageIsInitialized()
{
    QFETCH(QByteArray, slot);
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* leaf = panel.find<BitstreamLeaf>();
    browseTo(*leaf, writeFiles(bench, 1).first());
    auto* edit = getNamed<QLineEdit>(*leaf, "exportLineEdit");
    edit->setText("/tmp/errors");
    // Something that calls the slot when the path is emptied.
    QVERIFY(connect(edit, SIGNAL(textChanged(const QString&)), leaf, slot.constData()));
    takeCommands(&bench);
    ConsoleRecorder console;

    leaf->initialize();
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(console.getLines(), QStringList());
    QCOMPARE(getStored(), QStringList());
    // The same path typed by a person is heard.
    edit->setText("/tmp/errors");
    QVERIFY(!takeCommands(&bench).isEmpty());
}

void TestBitstreamLeaf::aChangedExportPathIsNoAction()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* edit = getNamed<QLineEdit>(*panel.getFolio(), "exportLineEdit");
    takeCommands(&bench);
    QTest::keyClicks(edit, "/tmp/errors");
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(takeCommands(&bench), QStringList());
}

void TestBitstreamLeaf::theSlotOfTheExportPathSetsTheErrorHandler()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    auto* leaf = panel.find<BitstreamLeaf>();
    getNamed<QLineEdit>(*leaf, "exportLineEdit")->setText("/tmp/errors");
    takeCommands(&bench);
    QVERIFY(QMetaObject::invokeMethod(leaf, "onPathChange"));
    QCOMPARE(takeCommands(&bench), QStringList(setHandler + " outfilepath=/tmp/errors"));
}

void TestBitstreamLeaf::withoutASelectedRowThePersonIsWarned_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("Load") << "loadButton" << QStringList();
    QTest::newRow("Program flash memory") << "programFlashButton" << QStringList();
    QTest::newRow("Reset && Load")
        << "resetLoadButton" << QStringList({"board set reset on", "board set reset off"});
}

void TestBitstreamLeaf::withoutASelectedRowThePersonIsWarned()
{
    QFETCH(QString, button);
    QFETCH(QStringList, commands);
    Bench bench;
    bench.setScenario(boardA());
    const QStringList stored = writeFiles(bench, 2);
    store(stored);
    Panel panel;
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), qPrintable(button));
    QCOMPARE(console.getLines().last(), QString("W: No bitstream file selected !"));
    QCOMPARE(console.getLines().size(), commands.size() + 1);
    QCOMPARE(takeCommands(&bench), commands);
    QCOMPARE(getStored(), stored);
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::withDisabledPageIndicesNothingIsChosen()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    browseTo(*panel.getFolio(), writeFiles(bench, 1).first());
    Zandu::application->leafIndexDisabled = true;
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(console.getLines(), QStringList("W: No bitstream file selected !"));
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(getStored(), QStringList());
}

void TestBitstreamLeaf::twoSelectedRowsAreFatalAndChangeNothing()
{
    Bench bench;
    bench.setScenario(boardA());
    const QStringList stored = writeFiles(bench, 2);
    store(stored);
    Panel panel;
    auto* leaf = panel.find<BitstreamLeaf>();
    getRecent(*leaf)->setSelectionMode(QAbstractItemView::MultiSelection);
    getRecent(*leaf)->selectAll();
    takeCommands(&bench);
    ConsoleRecorder console;
    for (const char* slot : {"onLoad", "onProgramFlash"}) {
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(leaf, slot), Orvex::Fatal);
    }
    QCOMPARE(console.getLines(), QStringList());
    QCOMPARE(takeCommands(&bench), QStringList());
    QCOMPARE(getStored(), stored);
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::withoutASelectionTheBrowsersOwnPathIsTaken()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    getNamed<QToolButton>(*panel.getFolio(), "browseButton")->click();
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    const QString directory = QDir::currentPath();
    QCOMPARE(takeCommands(&bench), QStringList({setHandler, load + directory}));
    QCOMPARE(getStored(), QStringList(directory));
    QCOMPARE(console.getLines(),
             QStringList({configured, "Loading " + directory, "  E: Bitstream failed"}));
}

void TestBitstreamLeaf::aBitstreamIsLoadedWithItsErrorHandlerBefore()
{
    Bench bench;
    bench.setScenario(boardA());
    const QStringList paths = writeFiles(bench, 1);
    store(paths);
    Panel panel;
    getRecent(*panel.getFolio())->setCurrentRow(0);
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(takeCommands(&bench), QStringList({setHandler, load + paths.first()}));
    QCOMPARE(console.getLines(), QStringList({configured, "Loading " + paths.first(),
                                              "  Bitstream successfully sent"}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::theErrorHandlerIsSetBeforeEachLoad()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    for (int time = 0; time < 2; ++time) {
        press(*panel.getFolio(), "loadButton");
        QCOMPARE(takeCommands(&bench), QStringList({setHandler, load + path}));
    }
}

void TestBitstreamLeaf::theExportPathGoesWithTheErrorHandler()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    const QString exportPath = QString::fromUtf8("/tmp/rel\xC3\xA8ve d'erreurs");
    getNamed<QLineEdit>(*panel.getFolio(), "exportLineEdit")->setText(exportPath);
    takeCommands(&bench);
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(takeCommands(&bench),
             QStringList({setHandler + " outfilepath=" + exportPath, load + path}));
    press(*panel.getFolio(), "programFlashButton");
    QCOMPARE(takeCommands(&bench), QStringList(program + path));
}

void TestBitstreamLeaf::programmingTheFlashSetsNoErrorHandler()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "programFlashButton");
    QCOMPARE(takeCommands(&bench), QStringList(program + path));
    // The same words as for a load: they do not say flash.
    QCOMPARE(console.getLines(),
             QStringList({"Loading " + path, "  Program flash memory succeeded"}));
    QCOMPARE(getStored(), QStringList(path));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::resetAndLoadIsAResetPulseAndALoad()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "resetLoadButton");
    QCOMPARE(takeCommands(&bench),
             QStringList({"board set reset on", "board set reset off", setHandler, load + path}));
    QCOMPARE(console.getLines(),
             QStringList({"Reset bit successfully set to on", "Reset bit successfully set to off",
                          configured, "Loading " + path, "  Bitstream successfully sent"}));
}

void TestBitstreamLeaf::aPathReachesTheToolAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "  two  blanks .ksb";
    QTest::newRow("accents") << QString::fromUtf8("d\xC3\xA9j\xC3\xA0 \xE6\x97\xA5.ksb");
    QTest::newRow("outside the first plane") << QString::fromUtf8("\xF0\x9F\x94\xA7.ksb");
    QTest::newRow("markup and quotes") << "<b>'\"&amp;%1.ksb";
    QString longName;
    while (longName.size() < 3600) {
        longName += QString(200, 'd') + '/';
    }
    QTest::newRow("almost 4,000 characters") << longName + QString(200, 'f') + ".ksb";
}

void TestBitstreamLeaf::aPathReachesTheToolAsItIs()
{
    QFETCH(QString, name);
    Bench bench;
    bench.setScenario(boardA());
    QVERIFY(QDir().mkpath(QFileInfo(bench.getPath(name)).path()));
    const QString path = bench.writeFile(name, "bits");
    Panel panel;
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QVERIFY(bench.getJournalBytes().contains((load + path).toUtf8() + '\n'));
    QCOMPARE(console.getLines().last(), QString("  Bitstream successfully sent"));
    QCOMPARE(getStored(), QStringList(path));

    // And again by the row that it has become.
    getNamed<QToolButton>(*panel.getFolio(), "recentButton")->click();
    getRecent(*panel.getFolio())->setCurrentRow(0);
    press(*panel.getFolio(), "programFlashButton");
    QVERIFY(bench.getJournalBytes().contains((program + path).toUtf8() + '\n'));
}

void TestBitstreamLeaf::anEleventhFilePushesTheOldestOut_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("Load") << "loadButton";
    QTest::newRow("Program flash memory") << "programFlashButton";
}

void TestBitstreamLeaf::anEleventhFilePushesTheOldestOut()
{
    QFETCH(QString, button);
    Bench bench;
    bench.setScenario(boardA());
    const QStringList paths = writeFiles(bench, 11);
    Panel panel;
    QStringList expected;
    for (const QString& path : paths) {
        browseTo(*panel.getFolio(), path);
        press(*panel.getFolio(), qPrintable(button));
        expected.prepend(path);
        QCOMPARE(getStored(), expected.mid(0, 10));
    }
    QCOMPARE(getStored().size(), 10);
    QVERIFY(!getStored().contains(paths.first()));
}

void TestBitstreamLeaf::aFileOfTheListMovesToItsFront_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("the first") << 0;
    QTest::newRow("the middle") << 2;
    QTest::newRow("the last") << 4;
}

void TestBitstreamLeaf::aFileOfTheListMovesToItsFront()
{
    QFETCH(int, place);
    Bench bench;
    bench.setScenario(boardA());
    QStringList paths = writeFiles(bench, 5);
    // All entries that equal it go; one that differs in case alone stays.
    const QString upper = paths[place].toUpper();
    store(paths + QStringList({upper, paths[place]}));
    Panel panel;
    browseTo(*panel.getFolio(), paths[place]);
    press(*panel.getFolio(), "loadButton");
    paths.move(place, 0);
    QCOMPARE(getStored(), paths + QStringList(upper));
}

void TestBitstreamLeaf::aListThatIsTooLongIsCut()
{
    Bench bench;
    bench.setScenario(boardA());
    const QStringList paths = writeFiles(bench, 25);
    store(paths);
    Panel panel;
    QCOMPARE(getRows(*panel.getFolio()), paths);
    browseTo(*panel.getFolio(), paths[20]);
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(getStored(), QStringList(paths[20]) + paths.mid(0, 9));
}

void TestBitstreamLeaf::filesThatHaveGoneStayInTheList()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    store({"/nowhere/gone.ksb"});
    Panel panel;
    browseTo(*panel.getFolio(), path);
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(getStored(), QStringList({path, "/nowhere/gone.ksb"}));
    QCOMPARE(getRows(*panel.getFolio()), QStringList(path));
}

void TestBitstreamLeaf::loadingFromTheRecentListLeavesItsRows()
{
    Bench bench;
    bench.setScenario(boardA());
    const QStringList paths = writeFiles(bench, 3);
    store(paths);
    Panel panel;
    QListWidget* list = getRecent(*panel.getFolio());
    list->setCurrentRow(2);
    for (const char* button : {"loadButton", "programFlashButton"}) {
        press(*panel.getFolio(), button);
        QCOMPARE(getStored(), QStringList({paths[2], paths[0], paths[1]}));
        QCOMPARE(getRows(*panel.getFolio()), paths);
        QVERIFY(list->item(2)->isSelected());
    }
}

void TestBitstreamLeaf::loadingFromTheBrowserRebuildsTheRows()
{
    Bench bench;
    bench.setScenario(boardA());
    const QStringList paths = writeFiles(bench, 3);
    store(paths);
    Panel panel;
    browseTo(*panel.getFolio(), paths[1]);
    press(*panel.getFolio(), "programFlashButton");
    QCOMPARE(getRows(*panel.getFolio()), QStringList({paths[1], paths[0], paths[2]}));
    browseTo(*panel.getFolio(), paths[2]);
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(getRows(*panel.getFolio()), QStringList({paths[2], paths[1], paths[0]}));
}

void TestBitstreamLeaf::theListIsWrittenAtOnce()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold(setHandler));
    browseTo(*panel.getFolio(), path);
    QStringList inTheFile;
    doOnceReceived(&bench, setHandler, [&] {
        // Another reader of the file sees it while the first command still waits.
        const QString copy = bench.getPath("settings.conf");
        QFile::copy(QSettings().fileName(), copy);
        inTheFile = QSettings(copy, QSettings::NativeFormat).value(key).toStringList();
        bench.release();
    });
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(inTheFile, QStringList(path));
}

void TestBitstreamLeaf::aFailedTransferKeepsTheFileInTheList_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<QString>("message");
    QTest::newRow("refused load") << "loadButton"
                                  << Bench::fault("chip bitstream load", "kind = \"refused\"")
                                  << "  E: Bitstream failed";
    QTest::newRow("counters") << "loadButton"
                              << "counters = [0, 1, 0]"
                              << "  E: Bitstream failed";
    QTest::newRow("refused flash")
        << "programFlashButton" << Bench::fault("board spi", "kind = \"refused\"")
        << "  E: Program flash memory failed";
}

void TestBitstreamLeaf::aFailedTransferKeepsTheFileInTheList()
{
    QFETCH(QString, button);
    QFETCH(QString, scenario);
    QFETCH(QString, message);
    Bench bench;
    bench.setScenario(boardA(scenario));
    const QStringList paths = writeFiles(bench, 2);
    store(paths);
    Panel panel;
    browseTo(*panel.getFolio(), paths[1]);
    ConsoleRecorder console;
    press(*panel.getFolio(), qPrintable(button));
    QCOMPARE(console.getLines().last(), message);
    QCOMPARE(getStored(), QStringList({paths[1], paths[0]}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::aThrowingTransferIsReportedAndTheDepthRestored_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("report");
    for (const QString& button : {QString("loadButton"), QString("programFlashButton")}) {
        const QString function = button == "loadButton" ? "onLoad" : "onProgramFlash";
        const auto add = [&](const char* kind, const QString& report) {
            QTest::newRow(qPrintable(function + ": " + kind)) << button << kind << report;
        };
        add("of the family", "  E: Sabotage [test, here:1]");
        add("standard",
            "  E: Processing aborted [broken] [" + function + ", src/lib/Board/BitstreamLeaf:");
        add("anything", "  E: Processing aborted [something strange...] [" + function +
                            ", src/lib/Board/BitstreamLeaf:");
    }
}

void TestBitstreamLeaf::aThrowingTransferIsReportedAndTheDepthRestored()
{
    QFETCH(QString, button);
    QFETCH(QString, kind);
    QFETCH(QString, report);
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    ConsoleRecorder console;
    const auto fail = [kind] {
        if (kind == "of the family") {
            Orvex::raise(Orvex::InvalidRequest("Sabotage"), "test", "here", 1);
        }
        if (kind == "standard") {
            throw std::runtime_error("broken");
        }
        throw 1;
    };
    {
        const Saboteur ofLoads("Bitstream successfully sent", fail);
        const Saboteur ofFlashes("Program flash memory succeeded", fail);
        press(*panel.getFolio(), qPrintable(button));
    }
    QVERIFY2(console.getLines().last().startsWith(report), qPrintable(console.getLines().last()));
    QCOMPARE(getStored(), QStringList(path));
    Orvex::console->print("next", "");
    QCOMPARE(console.getLines().last(), QString("next"));
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions(), QStringList());
}

void TestBitstreamLeaf::aThrowingErrorHandlerLeavesTheSlot()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    ConsoleRecorder console;
    {
        const Saboteur saboteur(configured.toStdString(),
                                [] { throw Orvex::InvalidRequest("Sabotage"); });
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(panel.find<BitstreamLeaf>(), "onLoad"),
                                 Orvex::InvalidRequest);
    }
    QCOMPARE(console.getLines(), QStringList(configured));
    QCOMPARE(takeCommands(&bench), QStringList(setHandler));
    QCOMPARE(getStored(), QStringList(path));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::aFailedResetLetsTheLoadGoOn()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::fault("board set reset", "kind = \"refused\"\ntimes = 0"));
    browseTo(*panel.getFolio(), path);
    ConsoleRecorder console;
    press(*panel.getFolio(), "resetLoadButton");
    QCOMPARE(console.getLines(), QStringList({"E: Reset failed", "E: Reset failed", configured,
                                              "Loading " + path, "  Bitstream successfully sent"}));
}

void TestBitstreamLeaf::aThrowingResetLetsNoLoadHappen()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    browseTo(*panel.getFolio(), writeFiles(bench, 1).first());
    takeCommands(&bench);
    const Saboteur saboteur("Reset bit successfully set to on",
                            [] { throw Orvex::InvalidRequest("Sabotage"); });
    QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(panel.find<BitstreamLeaf>(), "onResetLoad"),
                             Orvex::InvalidRequest);
    QCOMPARE(takeCommands(&bench), QStringList("board set reset on"));
    QCOMPARE(getStored(), QStringList());
}

void TestBitstreamLeaf::withoutABoardTheCommandsAreSentAllTheSame()
{
    Bench bench;
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    browseTo(*panel.getFolio(), path);
    ConsoleRecorder console;
    press(*panel.getFolio(), "resetLoadButton");
    QCOMPARE(takeCommands(&bench),
             QStringList({"board set reset on", "board set reset off", setHandler, load + path}));
    QCOMPARE(console.getLines(), QStringList({"E: Reset failed", "E: Reset failed",
                                              "E: Error handler configuration failed",
                                              "Loading " + path, "  E: Bitstream failed"}));
}

void TestBitstreamLeaf::aSecondPressInTheWaitOfTheFirstIsQueuedBehindIt()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("chip bitstream load"));
    browseTo(*panel.getFolio(), path);
    takeCommands(&bench);
    ConsoleRecorder console;
    doOnceReceived(&bench, load + path, [&] {
        doInNextWait([&] { bench.release(); });
        press(*panel.getFolio(), "programFlashButton");
    });
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(takeCommands(&bench), QStringList({setHandler, load + path, program + path}));
    QCOMPARE(console.getLines(),
             QStringList({configured, "Loading " + path, "  Loading " + path,
                          "    Program flash memory succeeded", "  Bitstream successfully sent"}));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

void TestBitstreamLeaf::aBoardThatVanishesInTheWaitOfALoadIsNoHarm()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("board set reset on"));
    browseTo(*panel.getFolio(), path);
    doOnceReceived(&bench, "board set reset on", [&] {
        bench.setScenario({});
        doInNextWait([&] { bench.release(); });
        panel.getEngine()->refreshTamsaMap();
    });
    ConsoleRecorder console;
    press(*panel.getFolio(), "resetLoadButton");
    QVERIFY(panel.getEngine()->getTamsas().isEmpty());
    QVERIFY(console.contains("Disconnected KS-Dev A"));
    QCOMPARE(console.getLines().last(), QString("  E: Bitstream failed"));
}

void TestBitstreamLeaf::anEmptyReplyIsAFailedLoad()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() + Bench::reply("chip bitstream", "COMMAND SUCCEEDED\n"));
    browseTo(*panel.getFolio(), path);
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(console.getLines(), QStringList({"E: Error handler configuration failed",
                                              "Loading " + path, "  E: Bitstream failed"}));
}

void TestBitstreamLeaf::aReplyOfTenMegabytesIsJudgedByItsLine()
{
    Bench bench;
    bench.setScenario(boardA());
    Panel panel;
    setScenario(&bench, panel.getEngine(),
                boardA() +
                    Bench::fault("chip bitstream load", "kind = \"large\"\nbytes = 10000000"));
    browseTo(*panel.getFolio(), writeFiles(bench, 1).first());
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(console.getLines().last(), QString("  Bitstream successfully sent"));
}

void TestBitstreamLeaf::hidingThePageInTheWaitOfALoadLetsItFinish()
{
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    Panel panel;
    panel.getWindow()->show();
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold("chip bitstream load"));
    browseTo(*panel.getFolio(), path);
    doOnceReceived(&bench, load + path, [&] {
        panel.getFolio()->raiseLeaf(0);
        panel.getFolio()->raiseLeaf(2);
        bench.release();
    });
    ConsoleRecorder console;
    press(*panel.getFolio(), "loadButton");
    QCOMPARE(console.getLines().last(), QString("  Bitstream successfully sent"));
}

void TestBitstreamLeaf::withoutAFolioOnlyTheListIsKept()
{
    const Bench bench;
    const QString path = writeFiles(bench, 1).first();
    BitstreamLeaf leaf(nullptr);
    QVERIFY(leaf.getFolio() == nullptr);
    QVERIFY(leaf.getKSBaseHandler() == nullptr);
    browseTo(leaf, path);
    ConsoleRecorder console;
    press(leaf, "resetButton");
    press(leaf, "loadButton");
    press(leaf, "resetLoadButton");
    press(leaf, "programFlashButton");
    QVERIFY(QMetaObject::invokeMethod(&leaf, "onPathChange"));
    QCOMPARE(console.getLines(), QStringList());
    QCOMPARE(getStored(), QStringList(path));
}

void TestBitstreamLeaf::theWindowMayBeDeletedInAWait_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("commands");
    const QStringList pulse = {"board set reset on", "board set reset off"};
    const QStringList all = pulse + QStringList({setHandler, load + "PATH"});
    // What has begun is done to its end; what would have begun afterwards is not.
    QTest::newRow("reset") << "board set reset on" << pulse;
    QTest::newRow("error handler") << setHandler << all;
    QTest::newRow("load") << load + "PATH" << all;
}

void TestBitstreamLeaf::theWindowMayBeDeletedInAWait()
{
    QFETCH(QString, command);
    QFETCH(QStringList, commands);
    Bench bench;
    bench.setScenario(boardA());
    const QString path = writeFiles(bench, 1).first();
    command.replace("PATH", path);
    FragilePanel panel;
    setScenario(&bench, panel.getEngine(), boardA() + bench.hold(command));
    browseTo(*panel.getWindow(), path);
    auto* leaf = panel.getWindow()->findChild<BitstreamLeaf*>();
    takeCommands(&bench);
    panel.deleteWindowOnceReceived(&bench, command);
    QVERIFY(QMetaObject::invokeMethod(leaf, "onResetLoad"));
    QVERIFY(panel.getWindow() == nullptr);
    QCOMPARE(takeCommands(&bench), commands.replaceInStrings("PATH", path));
    QCOMPARE(Orvex::console->getDepth(), 0);
}

KESTOBOARD_TEST_MAIN(TestBitstreamLeaf)

#include "tst_bitstream_leaf.moc"
