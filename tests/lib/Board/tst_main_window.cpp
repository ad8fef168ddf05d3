#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"
#include "support/TestMain.h"
#include "support/When.h"

#include <Board/CommandLineEdit.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <application/ConsoleWidget.h>
#include <foundation/Critical.h>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

using Test::Bench;

/// The window around the pages.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theStartHasItsOrder();
    void theFirstListingComesBeforeTheWindowIsDone();
    void theWindowHasItsMinimumSizeAndNoTitle();
    void theStatusBarHoldsOneLabel();
    void theCenterHoldsTheSplitter();
    void theSplitterHoldsThePagesAboveTheConsole();
    void inDebugModeTheCommandRowStands();
    void outsideDebugModeOnlyTheConsoleStands();
    void theCommandRowIsConnected_data();
    void theCommandRowIsConnected();
    void theCommandFileTimerRunsInBothModes_data();
    void theCommandFileTimerRunsInBothModes();
    void theSlotsStandInTheirOrder();
    void theCommandRowHasNoShortcut();
    void withoutTheToolThereIsNoWindow();
    void theEngineOutlivesTheWindow();
    void aSecondWindowWorksAfterTheFirst();
    void slotsRunInsideTheConstructor();

private:
    void makePanel(bool isDebug)
    {
        const Test::DebugMode debug(isDebug);
        panel = std::make_unique<Test::Panel>();
    }
    QWidget* getLowerPanel() const { return panel->find<QSplitter>()->widget(1); }
    QTimer* getCommandFileTimer() const
    {
        return panel->getWindow()->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    }

    std::unique_ptr<Bench> bench;
    std::unique_ptr<Test::Panel> panel;
};

void TestMainWindow::init()
{
    bench = std::make_unique<Bench>();
}

void TestMainWindow::cleanup()
{
    panel.reset();
    bench.reset();
}

void TestMainWindow::theStartHasItsOrder()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    Test::ConsoleRecorder recorder;
    makePanel(false);
    const QStringList lines = recorder.getLines();
    QVERIFY(lines.at(0).startsWith("Using ksbase2 found in: "));
    QCOMPARE(lines.mid(1, 2), QStringList({"Kestoboard succesfully launched", "Connected Aurora"}));
    QCOMPARE(panel->find<QComboBox>() == nullptr, false);
    QCOMPARE(panel->getFolio()->findChild<QComboBox*>()->window(), panel->getWindow());
}

void TestMainWindow::theFirstListingComesBeforeTheWindowIsDone()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel(false);
    QCOMPARE(bench->getJournal().first(), QString("board list"));
    QVERIFY(panel->getEngine()->getTamsa("Aurora") != nullptr);
    QVERIFY(!panel->getEngine()->isRefreshing());
    QCOMPARE(panel->getWindow()->isVisible(), false);
}

void TestMainWindow::theWindowHasItsMinimumSizeAndNoTitle()
{
    makePanel(false);
    QCOMPARE(panel->getWindow()->minimumSize(), QSize(800, 600));
    QCOMPARE(panel->getWindow()->windowTitle(), QString());
    QVERIFY(!panel->getWindow()->testAttribute(Qt::WA_SetWindowIcon));
}

void TestMainWindow::theStatusBarHoldsOneLabel()
{
    makePanel(false);
    QStatusBar* const bar = panel->getWindow()->statusBar();
    const QList<QLabel*> labels = bar->findChildren<QLabel*>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), Zandu::application->getCopyright(false));
    QCOMPARE(labels.first()->margin(), 3);
    QCOMPARE(labels.first()->parentWidget(), bar);
    QVERIFY(bar->isSizeGripEnabled());
    // A permanent widget stays while a message is shown.
    bar->showMessage("a message");
    QVERIFY(!labels.first()->isHidden());
}

void TestMainWindow::theCenterHoldsTheSplitter()
{
    makePanel(false);
    QWidget* const center = panel->getWindow()->centralWidget();
    auto* const layout = qobject_cast<QVBoxLayout*>(center->layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), static_cast<QWidget*>(panel->find<QSplitter>()));
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::Alignment());
    QCOMPARE(panel->find<QSplitter>()->orientation(), Qt::Vertical);
}

void TestMainWindow::theSplitterHoldsThePagesAboveTheConsole()
{
    makePanel(false);
    auto* const splitter = panel->find<QSplitter>();
    QCOMPARE(splitter->count(), 2);
    QCOMPARE(splitter->widget(0), static_cast<QWidget*>(panel->getFolio()));
    auto* const grid = qobject_cast<QGridLayout*>(getLowerPanel()->layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->horizontalSpacing(), 4);
    QCOMPARE(grid->verticalSpacing(), 4);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
}

void TestMainWindow::inDebugModeTheCommandRowStands()
{
    makePanel(true);
    QWidget* const lower = getLowerPanel();
    auto* const grid = qobject_cast<QGridLayout*>(lower->layout());
    QCOMPARE(grid->count(), 5);
    auto* const field = qobject_cast<Board::CommandLineEdit*>(grid->itemAtPosition(0, 0)->widget());
    auto* const send = qobject_cast<QPushButton*>(grid->itemAtPosition(0, 1)->widget());
    auto* const help = qobject_cast<QPushButton*>(grid->itemAtPosition(0, 2)->widget());
    auto* const file = qobject_cast<QToolButton*>(grid->itemAtPosition(0, 3)->widget());
    QVERIFY(field != nullptr && send != nullptr && help != nullptr && file != nullptr);
    QCOMPARE(field->text(), QString());
    QCOMPARE(send->text(), QString("Send"));
    QCOMPARE(help->text(), QString("Help"));
    QCOMPARE(file->text(), QString());
    QCOMPARE(file->popupMode(), QToolButton::MenuButtonPopup);
    QVERIFY(file->autoRaise());
    QCOMPARE(file->menu()->parentWidget(), static_cast<QWidget*>(file));
    for (int index = 0; index < 4; ++index) {
        QCOMPARE(grid->itemAt(index)->alignment(), Qt::Alignment());
        QCOMPARE(grid->itemAt(index)->widget()->parentWidget(), lower);
        int row = 0;
        int column = 0;
        int rowSpan = 0;
        int columnSpan = 0;
        grid->getItemPosition(index, &row, &column, &rowSpan, &columnSpan);
        QCOMPARE(QRect(column, row, columnSpan, rowSpan), QRect(index, 0, 1, 1));
    }
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    grid->getItemPosition(4, &row, &column, &rowSpan, &columnSpan);
    QCOMPARE(QRect(column, row, columnSpan, rowSpan), QRect(0, 1, 4, 1));
    QVERIFY(qobject_cast<Zandu::ConsoleWidget*>(grid->itemAt(4)->widget()) != nullptr);
    QCOMPARE(grid->itemAt(4)->widget()->parentWidget(), lower);
}

void TestMainWindow::outsideDebugModeOnlyTheConsoleStands()
{
    bench->writeFile("some.cmd", "board list\n");
    makePanel(false);
    auto* const grid = qobject_cast<QGridLayout*>(getLowerPanel()->layout());
    QCOMPARE(grid->count(), 1);
    QVERIFY(qobject_cast<Zandu::ConsoleWidget*>(grid->itemAtPosition(0, 0)->widget()) != nullptr);
    QCOMPARE(panel->find<Board::CommandLineEdit>(), nullptr);
    QCOMPARE(panel->findByText<QPushButton>("Send"), nullptr);
    QCOMPARE(panel->findByText<QPushButton>("Help"), nullptr);
    QVERIFY(QMetaObject::invokeMethod(panel->getWindow(), "refreshFileButton"));
}

void TestMainWindow::theCommandRowIsConnected_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("field") << "field" << QByteArray(SIGNAL(returnPressed()))
                           << QByteArray(SLOT(onSendCommand()));
    QTest::newRow("send") << "Send" << QByteArray(SIGNAL(clicked(bool)))
                          << QByteArray(SLOT(onSendCommand()));
    QTest::newRow("help") << "Help" << QByteArray(SIGNAL(clicked(bool)))
                          << QByteArray(SLOT(onHelp()));
    QTest::newRow("file") << "file" << QByteArray(SIGNAL(triggered(QAction*)))
                          << QByteArray(SLOT(onFileLaunch(QAction*)));
}

void TestMainWindow::theCommandRowIsConnected()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, signal);
    QFETCH(QByteArray, slot);
    makePanel(true);
    auto* const grid = qobject_cast<QGridLayout*>(getLowerPanel()->layout());
    QObject* sender = panel->findByText<QPushButton>(widget);
    if (widget == "field") {
        sender = panel->find<Board::CommandLineEdit>();
    } else if (widget == "file") {
        sender = grid->itemAtPosition(0, 3)->widget();
    }
    // Only a connection that is there, and there once, can be taken away once.
    QVERIFY(QObject::disconnect(sender, signal.constData(), panel->getWindow(), slot.constData()));
    QVERIFY(!QObject::disconnect(sender, signal.constData(), panel->getWindow(), slot.constData()));
}

void TestMainWindow::theCommandFileTimerRunsInBothModes_data()
{
    QTest::addColumn<bool>("isDebug");
    QTest::newRow("debug mode") << true;
    QTest::newRow("normal mode") << false;
}

void TestMainWindow::theCommandFileTimerRunsInBothModes()
{
    QFETCH(bool, isDebug);
    makePanel(isDebug);
    QTimer* const timer = getCommandFileTimer();
    QVERIFY(timer != nullptr);
    QCOMPARE(timer->interval(), 5000);
    QVERIFY(timer->isActive());
    QVERIFY(!timer->isSingleShot());
    QVERIFY(QObject::disconnect(timer, SIGNAL(timeout()), panel->getWindow(),
                                SLOT(refreshFileButton())));
}

void TestMainWindow::theSlotsStandInTheirOrder()
{
    const QMetaObject& meta = Board::MainWindow::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        QCOMPARE(meta.method(index).access(), QMetaMethod::Private);
        QCOMPARE(meta.method(index).methodType(), QMetaMethod::Slot);
        methods += meta.method(index).methodSignature();
    }
    QCOMPARE(methods, QStringList({"onSendCommand()", "onHelp()", "refreshFileButton()",
                                   "onFileLaunch(QAction*)"}));
}

void TestMainWindow::theCommandRowHasNoShortcut()
{
    makePanel(true);
    for (const char* const text : {"Send", "Help"}) {
        QVERIFY(panel->findByText<QPushButton>(text)->shortcut().isEmpty());
    }
}

void TestMainWindow::withoutTheToolThereIsNoWindow()
{
    bench->removeTool();
    Test::ConsoleRecorder recorder;
    QVERIFY_EXCEPTION_THROWN(std::make_unique<Board::MainWindow>(), Orvex::Critical);
    QVERIFY(!recorder.contains("Kestoboard succesfully launched"));
    QCOMPARE(QApplication::topLevelWidgets().size(), 0);
}

void TestMainWindow::theEngineOutlivesTheWindow()
{
    makePanel(false);
    Board::KSBaseHandler* const engine = panel->getEngine();
    panel->closeWindow();
    QVERIFY(!panel->run(Test::CommandType::Control, "help").empty());
    QVERIFY(!engine->isRunning());
}

void TestMainWindow::aSecondWindowWorksAfterTheFirst()
{
    bench->setScenario(Bench::board("Aurora", "selected = true"));
    makePanel(false);
    panel.reset();
    makePanel(true);
    QVERIFY(panel->getEngine()->getTamsa("Aurora") != nullptr);
}

void TestMainWindow::slotsRunInsideTheConstructor()
{
    bench->setScenario(bench->hold("board list"));
    bool wasServed = false;
    Test::when(
        this, [this] { return bench->count("board list") == 1; },
        [&] {
            wasServed = true;
            bench->release();
        });
    makePanel(false);
    QVERIFY(wasServed);
}

KESTOBOARD_TEST_MAIN(TestMainWindow)

#include "tst_main_window.moc"
