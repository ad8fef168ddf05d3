#include "PageProbe.h"

#include "support/TestMain.h"
#include "support/UnreportedLeaks.h"

#include <Board/BasicLeaf.h>
#include <Board/BitstreamLeaf.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>
#include <Board/ScopeLeaf.h>
#include <Board/Tamsa.h>
#include <application/Application.h>
#include <foundation/Fatal.h>
#include <foundation/Theme.h>

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <limits>
#include <memory>

using Board::Folio;
using Test::Bench;
using Test::ConsoleRecorder;
using Test::FragilePanel;
using Test::getNamed;
using Test::Panel;

namespace
{

const QString noCard = "No card detected !";

const QStringList bringUp = {"board select 0", "board set mode 'Jtag only'",
                             "board set jtag_clock on", "board set reset on",
                             "board set reset off"};
const QStringList pageLoad = {"board get mode", "board get force_bit", "board monitor get 0"};

QString selectedBoard(const QString& name)
{
    return Bench::board(name, "selected = true");
}

QComboBox* getCards(const QObject& root)
{
    return getNamed<QComboBox>(root, "cardComboBox");
}

QStringList getItems(const QComboBox& comboBox)
{
    QStringList items;
    for (int index = 0; index < comboBox.count(); ++index) {
        items += comboBox.itemText(index);
    }
    return items;
}

QStackedWidget* getStack(const Folio& folio)
{
    return folio.findChild<QStackedWidget*>("stackedWidget", Qt::FindDirectChildrenOnly);
}

QToolButton* getButton(const Folio& folio, const char* name)
{
    return getNamed<QToolButton>(folio, name);
}

} // namespace

class TestFolio : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Zandu::application->leafIndexDisabled = false; }

    void thePagesStandInTheirOrder_data();
    void thePagesStandInTheirOrder();
    void theButtonsStandInANarrowColumnAtTheTop();
    void theStackAndTheBoardSelectorStandInTheGrid();
    void withoutABoardTheBitstreamPageShowsAndTheSelectorSaysSo();
    void theStringTypeIsRegistered();
    void theSlotsStandInTheirOrder();
    void aMadeButtonHasNoParentAndItsCheckedState();
    void thePagesFindTheEngineThroughTheSplitter();
    void aFolioWithoutAWindowHasNoEngineAndStaysUsable();

    void thePageIndicesAreThePositionsInTheStack();
    void disabledPageIndicesAreAllMinusOne();
    void raisingAPageClicksItsButton();
    void aNumberWithoutAButtonDoesNothing_data();
    void aNumberWithoutAButtonDoesNothing();
    void aDisabledButtonLeavesThePageReachable();

    void theFirstBoardReplacesTheItemAndInitializesThePagesOnce();
    void aBoardAtTheStartInitializesThePages();
    void aSecondBoardInitializesNothing();
    void theLastBoardThatLeavesTellsNoPage();
    void theSelectorFollowsTheSelectedBoard();
    void theSelectedNameIsFoundExactly_data();
    void theSelectedNameIsFoundExactly();
    void withoutASelectedBoardTheFirstItemIsCurrent();
    void aRefreshWithASelectionThatIsNoMoreListedShowsNothingWrong();

    void aPickedBoardIsSelectedAndItsPagesAreLoaded();
    void aPickedNameGoesBackAsTheBytesOfTheTool();
    void aRefusedSelectionStillLoadsThePages();
    void aPollInTheWaitOfASelectionDoesNotSelectAgain();
    void aFatalReplyLeavesTheSelectorMute();
    void aFatalReplyAfterAPickReachesTheApplication();
    void theWindowMayBeDeletedInTheWaitOfASelection();
    void theWindowMayBeDeletedInTheWaitOfAPage();
    void manyBoardsFillTheSelector();
    void everyControlHasANameForAssistiveTools();
};

void TestFolio::thePagesStandInTheirOrder_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("page");

    QTest::newRow("0") << "Basic"
                       << "basicButton"
                       << "Board::BasicLeaf";
    QTest::newRow("1") << "Monitoring"
                       << "monitoringButton"
                       << "Board::MonitoringLeaf";
    QTest::newRow("2") << "Bitstream"
                       << "bitstreamButton"
                       << "Board::BitstreamLeaf";
    QTest::newRow("3") << "Scope"
                       << "scopeButton"
                       << "Board::ScopeLeaf";
}

void TestFolio::thePagesStandInTheirOrder()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    QFETCH(QString, page);
    const int index = QString(QTest::currentDataTag()).toInt();
    Bench bench;
    Panel panel;
    Folio* folio = panel.getFolio();

    auto* button = folio->findChild<QToolButton*>(name);
    QVERIFY(button != nullptr);
    QCOMPARE(button->text(), text);
    QCOMPARE(button->width(), 100);
    QCOMPARE(button->minimumWidth(), 100);
    QCOMPARE(button->maximumWidth(), 100);
    QVERIFY(button->autoRaise());
    QVERIFY(button->isCheckable());
    QCOMPARE(button->iconSize(), QSize(32, 32));
    QVERIFY(!button->icon().isNull());
    QCOMPARE(button->icon().cacheKey(),
             Orvex::theme->getIcon(text.toLower().toStdString()).cacheKey());
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    QCOMPARE(button->group()->id(button), index);
    QVERIFY(button->group()->exclusive());
    QVERIFY(button->group()->parent() == nullptr);

    QStackedWidget* stack = getStack(*folio);
    QCOMPARE(stack->count(), 4);
    QCOMPARE(QString(stack->widget(index)->metaObject()->className()), page);

    // A click of a person raises the page and unchecks the others.
    button->click();
    QCOMPARE(stack->currentIndex(), index);
    QCOMPARE(button->group()->checkedId(), index);
}

void TestFolio::theButtonsStandInANarrowColumnAtTheTop()
{
    Bench bench;
    Panel panel;
    QWidget* column = getButton(*panel.getFolio(), "basicButton")->parentWidget();
    QCOMPARE(column->parentWidget(), panel.getFolio());
    QCOMPARE(column->minimumWidth(), 124);
    QCOMPARE(column->maximumWidth(), 124);

    auto* layout = qobject_cast<QVBoxLayout*>(column->layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->spacing(), 12);
    QCOMPARE(Test::getMargins(*column), QList<int>({0, 0, 12, 0}));
    QCOMPARE(layout->count(), 5);
    for (int index = 0; index < 4; ++index) {
        QCOMPARE(layout->itemAt(index)->widget(),
                 getButton(*panel.getFolio(), "basicButton")->group()->button(index));
        QCOMPARE(layout->itemAt(index)->alignment(), Qt::Alignment());
        QCOMPARE(layout->stretch(index), 0);
    }
    QVERIFY(layout->itemAt(4)->spacerItem() != nullptr);
    QCOMPARE(layout->stretch(4), 1);
}

void TestFolio::theStackAndTheBoardSelectorStandInTheGrid()
{
    Bench bench;
    Panel panel;
    const Folio& folio = *panel.getFolio();
    QCOMPARE(Test::describeGrid(folio),
             QStringList({"0,0 1x1 QWidget ", "0,1 1x3 QStackedWidget stackedWidget",
                          "1,0 1x4 left QComboBox cardComboBox"}));
    auto* grid = qobject_cast<QGridLayout*>(folio.layout());
    QCOMPARE(grid->columnStretch(2), 1);
    QCOMPARE(grid->columnStretch(0), 0);
    QCOMPARE(grid->columnStretch(1), 0);
    QCOMPARE(grid->rowStretch(0), 1);
    QCOMPARE(grid->rowStretch(1), 0);
    QCOMPARE(getCards(folio)->sizeAdjustPolicy(), QComboBox::AdjustToContents);
    QVERIFY(Test::isEnriched(*getCards(folio)));
}

void TestFolio::withoutABoardTheBitstreamPageShowsAndTheSelectorSaysSo()
{
    Bench bench;
    Panel panel;
    const Folio& folio = *panel.getFolio();
    QCOMPARE(getItems(*getCards(folio)), QStringList(noCard));
    QCOMPARE(getCards(folio)->currentText(), noCard);
    QCOMPARE(folio.getCurrentIndex(), 2L);
    QVERIFY(getButton(folio, "bitstreamButton")->isChecked());
    QVERIFY(!getButton(folio, "basicButton")->isChecked());
    QCOMPARE(Test::takeCommands(&bench), QStringList());
}

void TestFolio::theStringTypeIsRegistered()
{
    Bench bench;
    Panel panel;
    QVERIFY(QMetaType::type("string") != QMetaType::UnknownType);
    QCOMPARE(QMetaType::sizeOf(QMetaType::type("string")), static_cast<int>(sizeof(std::string)));
}

void TestFolio::theSlotsStandInTheirOrder()
{
    QCOMPARE(Test::describeMethods(Folio::staticMetaObject),
             QStringList({"public slot setLeaf(int)", "private slot selectCard(int)"}));
}

void TestFolio::aMadeButtonHasNoParentAndItsCheckedState()
{
    const std::unique_ptr<Folio> folio = std::make_unique<Folio>(nullptr);
    for (const bool isChecked : {false, true}) {
        const std::unique_ptr<QToolButton> button(
            folio->createButton("A page", "scope", isChecked));
        QVERIFY(button->parent() == nullptr);
        QVERIFY(button->group() == nullptr);
        QCOMPARE(button->text(), QString("A page"));
        QCOMPARE(button->isChecked(), isChecked);
    }
}

void TestFolio::thePagesFindTheEngineThroughTheSplitter()
{
    Bench bench;
    Panel panel;
    Folio* folio = panel.getFolio();
    QVERIFY(qobject_cast<QSplitter*>(folio->parentWidget()) != nullptr);
    QCOMPARE(folio->getMainWindow(), panel.getWindow());
    QCOMPARE(folio->getKSBaseHandler(), panel.getEngine());
    QCOMPARE(panel.find<Board::BasicLeaf>()->getKSBaseHandler(), panel.getEngine());
    QCOMPARE(panel.find<Board::MonitoringLeaf>()->getKSBaseHandler(), panel.getEngine());
    QCOMPARE(panel.find<Board::BitstreamLeaf>()->getKSBaseHandler(), panel.getEngine());
    QCOMPARE(panel.find<Board::ScopeLeaf>()->getKSBaseHandler(), panel.getEngine());
    QCOMPARE(panel.find<Board::ScopeLeaf>()->getFolio(), folio);
}

void TestFolio::aFolioWithoutAWindowHasNoEngineAndStaysUsable()
{
    const std::unique_ptr<Folio> folio = std::make_unique<Folio>(nullptr);
    QVERIFY(folio->getMainWindow() == nullptr);
    QVERIFY(folio->getKSBaseHandler() == nullptr);
    QCOMPARE(getItems(*getCards(*folio)), QStringList(noCard));
    folio->initialize();
    folio->refreshCardComboBox();
    QVERIFY(QMetaObject::invokeMethod(folio.get(), "selectCard", Q_ARG(int, 0)));
    QCOMPARE(getItems(*getCards(*folio)), QStringList(noCard));
}

void TestFolio::thePageIndicesAreThePositionsInTheStack()
{
    Bench bench;
    Panel panel;
    const Folio& folio = *panel.getFolio();
    QCOMPARE(folio.getBasicIndex(), 0L);
    QCOMPARE(folio.getMonitoringIndex(), 1L);
    QCOMPARE(folio.getBitstreamIndex(), 2L);
    QCOMPARE(folio.getScopeIndex(), 3L);

    // They are looked up at each call.
    QStackedWidget* stack = getStack(folio);
    const std::unique_ptr<QWidget> page(stack->widget(1));
    stack->removeWidget(page.get());
    QCOMPARE(folio.getMonitoringIndex(), -1L);
    QCOMPARE(folio.getBitstreamIndex(), 1L);
    while (stack->count() != 0) {
        stack->removeWidget(stack->widget(0));
    }
    QCOMPARE(folio.getCurrentIndex(), -1L);
}

void TestFolio::disabledPageIndicesAreAllMinusOne()
{
    Bench bench;
    Panel panel;
    const Folio& folio = *panel.getFolio();
    Zandu::application->leafIndexDisabled = true;
    QCOMPARE(folio.getBasicIndex(), -1L);
    QCOMPARE(folio.getMonitoringIndex(), -1L);
    QCOMPARE(folio.getBitstreamIndex(), -1L);
    QCOMPARE(folio.getScopeIndex(), -1L);
    QCOMPARE(folio.getCurrentIndex(), 2L);
}

void TestFolio::raisingAPageClicksItsButton()
{
    Bench bench;
    Panel panel;
    Folio* folio = panel.getFolio();
    folio->raiseLeaf(3);
    QCOMPARE(folio->getCurrentIndex(), 3L);
    QVERIFY(getButton(*folio, "scopeButton")->isChecked());
    QVERIFY(!getButton(*folio, "bitstreamButton")->isChecked());
    // The slot alone does not move the buttons.
    folio->setLeaf(0);
    QCOMPARE(folio->getCurrentIndex(), 0L);
    QVERIFY(getButton(*folio, "scopeButton")->isChecked());
}

void TestFolio::aNumberWithoutAButtonDoesNothing_data()
{
    QTest::addColumn<qulonglong>("number");
    QTest::newRow("4") << 4ULL;
    QTest::newRow("2 to the 31st") << 0x80000000ULL;
    QTest::newRow("2 to the 32nd, which an int would take for 0") << 0x100000000ULL;
    QTest::newRow("the largest") << qulonglong(std::numeric_limits<unsigned long>::max());
}

void TestFolio::aNumberWithoutAButtonDoesNothing()
{
    QFETCH(qulonglong, number);
    const auto index = static_cast<unsigned long>(number);
    Bench bench;
    Panel panel;
    Folio* folio = panel.getFolio();
    folio->raiseLeaf(index);
    folio->disableLeaf(index);
    QCOMPARE(folio->getCurrentIndex(), 2L);
    for (const QToolButton* button : folio->findChildren<QToolButton*>()) {
        QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
    }
    folio->enableLeaf(index);
}

void TestFolio::aDisabledButtonLeavesThePageReachable()
{
    Bench bench;
    Panel panel;
    Folio* folio = panel.getFolio();
    folio->disableLeaf(1);
    QVERIFY(!getButton(*folio, "monitoringButton")->isEnabled());
    QVERIFY(panel.find<Board::MonitoringLeaf>()->isEnabledTo(folio));
    folio->raiseLeaf(1);
    QCOMPARE(folio->getCurrentIndex(), 2L);
    folio->setLeaf(1);
    QCOMPARE(folio->getCurrentIndex(), 1L);
    folio->enableLeaf(1);
    QVERIFY(getButton(*folio, "monitoringButton")->isEnabled());
}

void TestFolio::theFirstBoardReplacesTheItemAndInitializesThePagesOnce()
{
    Bench bench;
    Panel panel;
    QComboBox* cards = getCards(*panel.getFolio());
    QSignalSpy changes(cards, SIGNAL(currentIndexChanged(int)));
    Test::takeCommands(&bench);

    Test::setScenario(&bench, panel.getEngine(), selectedBoard("KS-Dev A"));
    QCOMPARE(getItems(*cards), QStringList("KS-Dev A"));
    // No selection follows the bring-up: the selector did not take the new item for a choice.
    QCOMPARE(Test::takeCommands(&bench), bringUp + pageLoad);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!cards->signalsBlocked());
}

void TestFolio::aBoardAtTheStartInitializesThePages()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A"));
    Panel panel;
    QCOMPARE(Test::takeCommands(&bench), bringUp + pageLoad);
    QCOMPARE(getCards(*panel.getFolio())->currentText(), QString("KS-Dev A"));
    QCOMPARE(getNamed<QComboBox>(*panel.getFolio(), "modeComboBox")->currentText(),
             QString("Jtag only"));
}

void TestFolio::aSecondBoardInitializesNothing()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A"));
    Panel panel;
    Test::takeCommands(&bench);

    Test::setScenario(&bench, panel.getEngine(),
                      selectedBoard("KS-Dev A") + Bench::board("KS-Dev B"));
    QCOMPARE(getItems(*getCards(*panel.getFolio())), QStringList({"KS-Dev A", "KS-Dev B"}));
    const QStringList commands = Test::takeCommands(&bench);
    QCOMPARE(commands.first(), QString("board select 1"));
    QCOMPARE(commands.last(), QString("board select 0"));
    QVERIFY(!commands.contains("board get mode"));
    QVERIFY(!commands.contains("board monitor get 0"));
}

void TestFolio::theLastBoardThatLeavesTellsNoPage()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A") +
                      Bench::reply("board monitor get", "V: 1 2\nCOMMAND SUCCEEDED\n"));
    Panel panel;
    const auto* table = getNamed<QWidget>(*panel.getFolio(), "monitoringWidget");
    const QStringList shown = Test::describeGrid(*table);
    QCOMPARE(shown.size(), 6);
    Test::takeCommands(&bench);

    Test::setScenario(&bench, panel.getEngine(), {});
    QCOMPARE(getItems(*getCards(*panel.getFolio())), QStringList(noCard));
    QCOMPARE(Test::takeCommands(&bench), QStringList());
    QCOMPARE(getNamed<QComboBox>(*panel.getFolio(), "modeComboBox")->currentText(),
             QString("Jtag only"));
    QCOMPARE(Test::describeGrid(*table), shown);

    // The next first board initializes again.
    Test::setScenario(&bench, panel.getEngine(), selectedBoard("KS-Dev A"));
    QCOMPARE(Test::takeCommands(&bench).mid(bringUp.size()), pageLoad);
}

void TestFolio::theSelectorFollowsTheSelectedBoard()
{
    Bench bench;
    bench.setScenario(Bench::board("KS-Dev A") + selectedBoard("KS-Dev B"));
    Panel panel;
    QComboBox* cards = getCards(*panel.getFolio());
    QCOMPARE(cards->currentText(), QString("KS-Dev B"));

    // Whatever it showed before: the item follows the engine.
    cards->blockSignals(true);
    cards->setCurrentIndex(0);
    cards->blockSignals(false);
    panel.getFolio()->refreshCardComboBox();
    QCOMPARE(cards->currentText(), QString("KS-Dev B"));
}

void TestFolio::theSelectedNameIsFoundExactly_data()
{
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("selected");
    QTest::newRow("case") << "KS-DEV A"
                          << "KS-Dev A";
    QTest::newRow("a part of another name") << "A KS-Dev"
                                            << "KS-Dev";
    QTest::newRow("accents") << "A" << QString::fromUtf8("Carte d'\xC3\xA9tude");
}

void TestFolio::theSelectedNameIsFoundExactly()
{
    QFETCH(QString, other);
    QFETCH(QString, selected);
    Bench bench;
    bench.setScenario(Bench::board(other) + selectedBoard(selected));
    Panel panel;
    const QComboBox* cards = getCards(*panel.getFolio());
    QCOMPARE(cards->count(), 2);
    QCOMPARE(cards->currentIndex(), 1);
    // One character a byte, as everything that the tool names.
    QCOMPARE(cards->currentText().toLatin1(), selected.toUtf8());
}

void TestFolio::withoutASelectedBoardTheFirstItemIsCurrent()
{
    Bench bench;
    bench.setScenario(Bench::board("KS-Dev A") + selectedBoard("KS-Dev B"));
    Panel panel;
    // An unknown name that the tool accepts leaves no board selected.
    Test::setScenario(&bench, panel.getEngine(),
                      Bench::board("KS-Dev A") + selectedBoard("KS-Dev B") +
                          Bench::reply("board select -1", "OK\nCOMMAND SUCCEEDED\n"));
    panel.getEngine()->select("nobody");
    QVERIFY(panel.getEngine()->getSelectedTamsa() == nullptr);
    panel.getFolio()->refreshCardComboBox();
    QCOMPARE(getCards(*panel.getFolio())->currentIndex(), 0);
}

void TestFolio::aRefreshWithASelectionThatIsNoMoreListedShowsNothingWrong()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A") + Bench::board("KS-Dev B"));
    Panel panel;
    Test::setScenario(&bench, panel.getEngine(), Bench::board("KS-Dev B"));
    QVERIFY(panel.getEngine()->getSelectedTamsa() == nullptr);
    QCOMPARE(getItems(*getCards(*panel.getFolio())), QStringList("KS-Dev B"));
    QCOMPARE(getCards(*panel.getFolio())->currentText(), QString("KS-Dev B"));
}

void TestFolio::aPickedBoardIsSelectedAndItsPagesAreLoaded()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A") + Bench::board("KS-Dev B"));
    Panel panel;
    Test::takeCommands(&bench);
    ConsoleRecorder console;

    getCards(*panel.getFolio())->setCurrentIndex(1);
    QCOMPARE(Test::takeCommands(&bench), QStringList("board select 1") + pageLoad);
    QCOMPARE(QString::fromStdString(panel.getEngine()->getSelectedTamsa()->getName()),
             QString("KS-Dev B"));
    QCOMPARE(console.getLines(), QStringList("Board succesfully selected"));
}

void TestFolio::aPickedNameGoesBackAsTheBytesOfTheTool()
{
    const QString name = QString::fromUtf8("Carte d'\xC3\xA9tude");
    Bench bench;
    bench.setScenario(selectedBoard("A") + Bench::board(name));
    Panel panel;
    Test::takeCommands(&bench);

    getCards(*panel.getFolio())->setCurrentIndex(1);
    QCOMPARE(Test::takeCommands(&bench).first(), QString("board select 1"));
    QCOMPARE(QString::fromStdString(panel.getEngine()->getSelectedTamsa()->getName()), name);
}

void TestFolio::aRefusedSelectionStillLoadsThePages()
{
    Bench bench;
    bench.setScenario(selectedBoard("KS-Dev A") + Bench::board("KS-Dev B"));
    Panel panel;
    Test::setScenario(&bench, panel.getEngine(),
                      selectedBoard("KS-Dev A") + Bench::board("KS-Dev B") +
                          Bench::fault("board select", "kind = \"refused\""));
    Test::takeCommands(&bench);
    ConsoleRecorder console;

    getCards(*panel.getFolio())->setCurrentIndex(1);
    QCOMPARE(Test::takeCommands(&bench), QStringList("board select 1") + pageLoad);
    QCOMPARE(console.getLines(), QStringList("E: Selection failed"));
    QCOMPARE(QString::fromStdString(panel.getEngine()->getSelectedTamsa()->getName()),
             QString("KS-Dev A"));
}

void TestFolio::aPollInTheWaitOfASelectionDoesNotSelectAgain()
{
    const QString boards = selectedBoard("KS-Dev A") + Bench::board("KS-Dev B");
    Bench bench;
    bench.setScenario(boards);
    Panel panel;
    Test::setScenario(&bench, panel.getEngine(), boards + bench.hold("board select 1"));
    Test::takeCommands(&bench);

    Test::doOnceReceived(&bench, "board select 1", [&] {
        bench.setScenario(boards + Bench::board("KS-Dev C"));
        Test::doInNextWait([&bench] { bench.release(); });
        panel.getEngine()->refreshTamsaMap();
    });
    QComboBox* cards = getCards(*panel.getFolio());
    cards->setCurrentIndex(1);
    const QStringList commands = Test::takeCommands(&bench);
    // Once by the person, and once to come back from the bring-up of the third board.
    QCOMPARE(commands.count("board select 1"), 2);
    QCOMPARE(commands.count("board select 2"), 1);
    QCOMPARE(commands.count("board get mode"), 1);
    QCOMPARE(getItems(*cards), QStringList({"KS-Dev A", "KS-Dev B", "KS-Dev C"}));
    QCOMPARE(cards->currentText(), QString("KS-Dev B"));
}

void TestFolio::aFatalReplyLeavesTheSelectorMute()
{
    Bench bench;
    Panel panel;
    bench.setScenario(selectedBoard("KS-Dev A") +
                      Bench::reply("board get force_bit", "Perhaps\nCOMMAND SUCCEEDED\n"));
    QVERIFY_EXCEPTION_THROWN(panel.getEngine()->refreshTamsaMap(), Orvex::Fatal);
    QVERIFY(getCards(*panel.getFolio())->signalsBlocked());
    // The Monitoring page comes after the Basic page and was not reached.
    QVERIFY(!Test::takeCommands(&bench).contains("board monitor get 0"));
}

void TestFolio::aFatalReplyAfterAPickReachesTheApplication()
{
    // The exception passes through the combo box, which then keeps the texts of its items.
    const Test::UnreportedLeaks textsOfTheItems;
    const QString boards = selectedBoard("KS-Dev A") + Bench::board("KS-Dev B");
    Bench bench;
    bench.setScenario(boards);
    Panel panel;
    Test::setScenario(&bench, panel.getEngine(),
                      boards + Bench::reply("board get force_bit", "Perhaps\nCOMMAND SUCCEEDED\n"));
    Test::takeCommands(&bench);

    QComboBox* cards = getCards(*panel.getFolio());
    QTest::keyClick(cards, Qt::Key_Down);
    QCOMPARE(Test::TestApplication::get()->takeEscapedExceptions().size(), 1);
    QCOMPARE(Test::takeCommands(&bench),
             QStringList({"board select 1", "board get mode", "board get force_bit"}));
    // The pick stands, and the next one is heard.
    QCOMPARE(cards->currentIndex(), 1);
    QTest::keyClick(cards, Qt::Key_Up);
    QCOMPARE(Test::takeCommands(&bench).first(), QString("board select 0"));
    Test::TestApplication::get()->takeEscapedExceptions();
}

void TestFolio::theWindowMayBeDeletedInTheWaitOfASelection()
{
    const QString boards = selectedBoard("KS-Dev A") + Bench::board("KS-Dev B");
    Bench bench;
    bench.setScenario(boards);
    FragilePanel panel;
    Test::setScenario(&bench, panel.getEngine(), boards + bench.hold("board select"));
    Test::takeCommands(&bench);

    panel.deleteWindowOnceReceived(&bench, "board select 1");
    QVERIFY(QMetaObject::invokeMethod(panel.getWindow()->getFolio(), "selectCard", Q_ARG(int, 1)));
    QVERIFY(panel.getWindow() == nullptr);
    QCOMPARE(Test::takeCommands(&bench), QStringList("board select 1"));
}

void TestFolio::theWindowMayBeDeletedInTheWaitOfAPage()
{
    const QString boards = selectedBoard("KS-Dev A");
    Bench bench;
    bench.setScenario(boards + bench.hold("board get force_bit"));
    bench.release();
    FragilePanel panel;
    Test::takeCommands(&bench);
    bench.holdAgain();

    panel.deleteWindowOnceReceived(&bench, "board get force_bit");
    panel.getWindow()->getFolio()->initialize();
    QVERIFY(panel.getWindow() == nullptr);
    QVERIFY(!Test::takeCommands(&bench).contains("board monitor get 0"));
}

void TestFolio::manyBoardsFillTheSelector()
{
    QString boards = selectedBoard("Board 100");
    QStringList names("Board 100");
    for (int number = 101; number < 140; ++number) {
        names += QString("Board %1").arg(number);
        boards += Bench::board(names.last());
    }
    Bench bench;
    bench.setScenario(boards);
    Panel panel;
    QCOMPARE(getItems(*getCards(*panel.getFolio())), names);
}

void TestFolio::everyControlHasANameForAssistiveTools()
{
    Bench bench;
    Panel panel;
    int controls = 0;
    for (QWidget* widget : panel.getFolio()->findChildren<QWidget*>()) {
        // The parts of a control have none of their own.
        const bool isPart = qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) != nullptr;
        const bool isControl = widget->inherits("QAbstractButton") ||
                               widget->inherits("QLineEdit") || widget->inherits("QComboBox") ||
                               widget->inherits("QAbstractSpinBox") ||
                               widget->inherits("QListWidget");
        if (!isControl || isPart) {
            continue;
        }
        ++controls;
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), qPrintable(widget->objectName()));
    }
    QVERIFY(controls >= 23);
}

KESTOBOARD_TEST_MAIN(TestFolio)

#include "tst_folio.moc"
