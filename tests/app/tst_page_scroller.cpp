// Pages that need more room than the window has.

#include "app/PageScroller.h"

#include "app/SchemeChoice.h"
#include "app/Shutdown.h"
#include "app/WindowFurniture.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

using Kestoboard::PageScroller;
using Test::Bench;
using Test::Panel;

namespace
{

const QSize smallest(800, 600);
const QSize usual(1024, 768);

/// A board with so many channels, the names of which have a width.
QString getBoard(const QString& name, int channels, const QString& prefix = "Rail ")
{
    QString scenario = Bench::board(name, "selected = true");
    for (int channel = 0; channel < channels; ++channel) {
        scenario += QString("[[board.channel]]\nname = \"%1%2\"\nvoltage = 1.0\ncurrent = 0.5\n")
                        .arg(prefix)
                        .arg(channel);
    }
    return scenario;
}

/// Whether every part of the widget is seen in its window.
bool isWholeInSight(const QWidget& widget)
{
    return widget.visibleRegion().boundingRect() == widget.rect();
}

/// Whether no label is lower or narrower than its text, and none lies on another.
bool isLaidOut(const QList<QLabel*>& labels)
{
    for (const QLabel* const label : labels) {
        if (label->width() < label->sizeHint().width() ||
            label->height() < label->sizeHint().height()) {
            return false;
        }
        for (const QLabel* const other : labels) {
            if (other != label && other->geometry().intersects(label->geometry())) {
                return false;
            }
        }
    }
    return true;
}

/// As the desktop says it: what is sent otherwise goes to the target alone.
void turnWheel(QWidget* target, const QPoint& angle)
{
    const QPoint place = target->rect().center();
    QWheelEvent turn(place, target->mapToGlobal(place), QPoint(), angle, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turn);
    qApp->notify(target, &turn);
}

/// A small window with two pages of many fields one below the other.
class TallPages : public QWidget
{
public:
    TallPages()
        : outside(new QLineEdit(this))
        , stack(new QStackedWidget(this))
    {
        auto* const layout = new QVBoxLayout(this);
        layout->setSizeConstraint(QLayout::SetNoConstraint);
        layout->addWidget(outside);
        layout->addWidget(stack);
        for (int page = 0; page < 2; ++page) {
            stack->addWidget(createPage());
        }
        new PageScroller(stack);
        resize(300, 300);
        show();
    }

    QVector<QLineEdit*> getFields(int page) const
    {
        QVector<QLineEdit*> fields;
        for (QLineEdit* const field : stack->widget(page)->findChildren<QLineEdit*>()) {
            fields += field;
        }
        return fields;
    }

    QLineEdit* const outside;
    QStackedWidget* const stack;

private:
    static QWidget* createPage()
    {
        auto* const page = new QWidget;
        auto* const form = new QVBoxLayout(page);
        for (int row = 0; row < 40; ++row) {
            form->addWidget(new QLineEdit(page));
        }
        return page;
    }
};

} // namespace

class TestPageScroller : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aTableOfAnyLengthCanBeRead_data();
    void aTableOfAnyLengthCanBeRead();
    void theLineAboveTheConsoleStays();
    void noOtherPageScrollsForTheTable();
    void thePagesStayInTheirStack();
    void aWideTableIsScrolledSideways();
    void aTableThatShrinksNeedsNoBar();
    void theWheelAndTheKeysScroll();
    void theFocusBringsAControlIntoSight();
    void whatIsPressedStaysUnderTheMouse();
    void thePageStaysWhileAnotherWindowIsUsed();
    void theLineCanBeDrawnUpOverThePage();
    void theTabulatorLeadsFromThePageToItsBar();
    void anotherPageBeginsAtItsTop();

private:
    void makeWindow(const QString& scenario, const QSize& size);
    void raiseMonitoring();
    QStackedWidget* getStack() const;
    QScrollBar* getBar(Qt::Orientation orientation) const;
    QWidget* getTable() const
    {
        return panel->getWindow()->findChild<QWidget*>("monitoringWidget");
    }
    QList<QLabel*> getLabels() const { return getTable()->findChildren<QLabel*>(); }
    QLabel* getLabel(const QString& text) const { return panel->findByText<QLabel>(text); }

    QScopedPointer<Bench> bench;
    QScopedPointer<Panel> panel;
    QScopedPointer<Kestoboard::SchemeChoice> schemes;
    QScopedPointer<Kestoboard::Shutdown> shutdown;
    QScopedPointer<Kestoboard::WindowFurniture> furniture;
};

void TestPageScroller::init()
{
    QSettings().clear();
    bench.reset(new Bench);
    schemes.reset(new Kestoboard::SchemeChoice);
    shutdown.reset(new Kestoboard::Shutdown);
}

void TestPageScroller::cleanup()
{
    furniture.reset();
    panel.reset();
    shutdown.reset();
    schemes.reset();
    bench.reset();
}

void TestPageScroller::makeWindow(const QString& scenario, const QSize& size)
{
    bench->setScenario(scenario);
    panel.reset(new Panel);
    furniture.reset(
        new Kestoboard::WindowFurniture(panel->getWindow(), schemes.data(), shutdown.data()));
    panel->getWindow()->resize(size);
    panel->getWindow()->show();
    QVERIFY(QTest::qWaitForWindowExposed(panel->getWindow()));
}

void TestPageScroller::raiseMonitoring()
{
    // From a page that fits, and is laid out.
    panel->getFolio()->raiseLeaf(0);
    QTRY_VERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    QCoreApplication::processEvents();
    panel->getFolio()->raiseLeaf(1);
    QTRY_VERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    QTRY_VERIFY(isLaidOut(getLabels()));
}

QStackedWidget* TestPageScroller::getStack() const
{
    return panel->getFolio()->findChild<QStackedWidget*>("stackedWidget",
                                                         Qt::FindDirectChildrenOnly);
}

QScrollBar* TestPageScroller::getBar(Qt::Orientation orientation) const
{
    return panel->getFolio()->findChild<QScrollBar*>(
        orientation == Qt::Vertical ? "pageScrollBar" : "pageLevelScrollBar");
}

void TestPageScroller::aTableOfAnyLengthCanBeRead_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("fits");
    QTest::newRow("none") << 0 << smallest << true;
    QTest::newRow("3") << 3 << smallest << true;
    QTest::newRow("16") << 16 << smallest << false;
    QTest::newRow("40") << 40 << smallest << false;
    QTest::newRow("3 in the usual window") << 3 << usual << true;
    QTest::newRow("40 in the usual window") << 40 << usual << false;
}

void TestPageScroller::aTableOfAnyLengthCanBeRead()
{
    QFETCH(int, channels);
    QFETCH(QSize, size);
    QFETCH(bool, fits);
    makeWindow(getBoard("KS-Dev A", channels), size);
    raiseMonitoring();
    QCOMPARE(panel->getWindow()->size(), size);
    QCOMPARE(getLabels().size(), 3 + 3 * channels);
    QScrollBar* const bar = getBar(Qt::Vertical);
    QTRY_COMPARE(bar->isHidden(), fits);
    QVERIFY(getBar(Qt::Horizontal)->isHidden());
    QVERIFY(isWholeInSight(*getLabel("<b>Current</b>")));
    if (channels == 0) {
        return;
    }
    QVERIFY(isWholeInSight(*getLabel("Rail 0")));
    bar->setValue(bar->maximum());
    QVERIFY(isWholeInSight(*getLabel(QString("Rail %1").arg(channels - 1))));
}

void TestPageScroller::theLineAboveTheConsoleStays()
{
    makeWindow(getBoard("KS-Dev A", 40), usual);
    const auto* const splitter = panel->find<QSplitter>();
    const QList<int> before = splitter->sizes();
    raiseMonitoring();
    QTRY_VERIFY(!getBar(Qt::Vertical)->isHidden());
    QCOMPARE(splitter->sizes(), before);
}

void TestPageScroller::noOtherPageScrollsForTheTable()
{
    makeWindow(getBoard("KS-Dev A", 40), smallest);
    for (const unsigned long page : {0, 2, 3}) {
        raiseMonitoring();
        QTRY_VERIFY(!getBar(Qt::Vertical)->isHidden());
        panel->getFolio()->raiseLeaf(page);
        QTRY_VERIFY(getBar(Qt::Vertical)->isHidden());
        QTRY_COMPARE(getStack()->currentWidget()->geometry(), getStack()->rect());
        const QWidget* const shown = getStack()->currentWidget();
        QVERIFY(shown->height() >= shown->minimumSizeHint().height());
    }
}

void TestPageScroller::thePagesStayInTheirStack()
{
    makeWindow(getBoard("KS-Dev A", 40), smallest);
    raiseMonitoring();
    const auto* const leaf = panel->find<Board::MonitoringLeaf>();
    QCOMPARE(getTable()->parentWidget(), leaf);
    QCOMPARE(leaf->parentWidget(), getStack());
    QCOMPARE(getStack()->parentWidget(), panel->getFolio());
    QCOMPARE(getStack()->count(), 4);
    QCOMPARE(panel->getFolio()->getMonitoringIndex(), 1L);
}

void TestPageScroller::aWideTableIsScrolledSideways()
{
    makeWindow(getBoard("KS-Dev A", 40, QString("A long name ").repeated(12)), smallest);
    raiseMonitoring();
    QScrollBar* const bar = getBar(Qt::Horizontal);
    QTRY_VERIFY(!bar->isHidden());
    QLabel* const last = getLabel("<b>Current</b>");
    QVERIFY(!isWholeInSight(*last));
    bar->setValue(bar->maximum());
    QVERIFY(isWholeInSight(*last));
    // Nothing of the page is drawn where the bars are.
    const QWidget* const page = getStack()->currentWidget();
    for (const QScrollBar* const shown : {bar, getBar(Qt::Vertical)}) {
        QVERIFY(isWholeInSight(*shown));
        QVERIFY(!page->mask().isEmpty());
        QVERIFY(!page->mask()
                     .translated(page->mapTo(panel->getFolio(), QPoint()))
                     .intersects(shown->geometry()));
    }
}

void TestPageScroller::aTableThatShrinksNeedsNoBar()
{
    makeWindow(getBoard("KS-Dev A", 40), smallest);
    raiseMonitoring();
    QScrollBar* const bar = getBar(Qt::Vertical);
    QTRY_VERIFY(!bar->isHidden());
    bar->setValue(bar->maximum());
    bench->setScenario(getBoard("KS-Dev A", 3));
    panel->getFolio()->initialize();
    QTRY_VERIFY(bar->isHidden());
    QTRY_COMPARE(getStack()->currentWidget()->geometry(), getStack()->rect());
    QTRY_VERIFY(isWholeInSight(*getLabel("Rail 0")));
    QVERIFY(isWholeInSight(*getLabel("Rail 2")));
}

void TestPageScroller::theWheelAndTheKeysScroll()
{
    makeWindow(getBoard("KS-Dev A", 40), smallest);
    QApplication::setActiveWindow(panel->getWindow());
    raiseMonitoring();
    QScrollBar* const bar = getBar(Qt::Vertical);
    QTRY_VERIFY(!bar->isHidden());
    turnWheel(getLabel("Rail 1"), QPoint(0, -120));
    QVERIFY(bar->value() > 0);
    turnWheel(getLabel("Rail 1"), QPoint(0, 120));
    QCOMPARE(bar->value(), 0);
    // There it stays.
    turnWheel(getLabel("Rail 1"), QPoint(0, 120));
    QCOMPARE(bar->value(), 0);
    bar->setFocus(Qt::TabFocusReason);
    QVERIFY(bar->hasFocus());
    QTest::keyClick(bar, Qt::Key_End);
    QTRY_VERIFY(isWholeInSight(*getLabel("Rail 39")));
    QTest::keyClick(bar, Qt::Key_Home);
    QVERIFY(isWholeInSight(*getLabel("Rail 0")));
}

void TestPageScroller::theFocusBringsAControlIntoSight()
{
    TallPages window;
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QVector<QLineEdit*> fields = window.getFields(0);
    QTRY_VERIFY(!isWholeInSight(*fields.last()));
    window.outside->setFocus();
    fields.last()->setFocus();
    QTRY_VERIFY(isWholeInSight(*fields.last()));
    fields.first()->setFocus();
    QTRY_VERIFY(isWholeInSight(*fields.first()));
    QVERIFY(!isWholeInSight(*fields.last()));
}

void TestPageScroller::whatIsPressedStaysUnderTheMouse()
{
    TallPages window;
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.outside->setFocus();
    auto* const bar = window.findChild<QScrollBar*>("pageScrollBar");
    QTRY_VERIFY(bar->maximum() > 0);
    QLineEdit* cut = nullptr;
    for (QLineEdit* const field : window.getFields(0)) {
        if (!field->visibleRegion().isEmpty() && !isWholeInSight(*field)) {
            cut = field;
        }
    }
    QVERIFY(cut != nullptr);
    // Through the window, as the desktop says it.
    const QPoint place = cut->mapTo(&window, QPoint(20, 1));
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QTRY_VERIFY(cut->hasFocus());
    QCOMPARE(bar->value(), 0);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(cut->mapTo(&window, QPoint(20, 1)), place);
}

void TestPageScroller::thePageStaysWhileAnotherWindowIsUsed()
{
    TallPages window;
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.outside->setFocus();
    window.getFields(0).first()->setFocus();
    auto* const bar = window.findChild<QScrollBar*>("pageScrollBar");
    QTRY_VERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    QVERIFY(!window.getFields(0).first()->hasFocus());
    QApplication::setActiveWindow(&window);
    QVERIFY(window.getFields(0).first()->hasFocus());
    QCOMPARE(bar->value(), bar->maximum());
}

void TestPageScroller::theLineCanBeDrawnUpOverThePage()
{
    makeWindow(getBoard("KS-Dev A", 40), usual);
    raiseMonitoring();
    QTRY_VERIFY(!getBar(Qt::Vertical)->isHidden());
    auto* const splitter = panel->find<QSplitter>();
    const int height = splitter->widget(0)->height();
    splitter->setSizes({height / 2, splitter->height() - height / 2});
    QTRY_VERIFY(splitter->widget(0)->height() < height);
    QScrollBar* const bar = getBar(Qt::Vertical);
    bar->setValue(bar->maximum());
    QVERIFY(isWholeInSight(*getLabel("Rail 39")));
}

void TestPageScroller::theTabulatorLeadsFromThePageToItsBar()
{
    TallPages window;
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* const bar = window.findChild<QScrollBar*>("pageScrollBar");
    QTRY_VERIFY(bar->isVisible());
    window.getFields(0).last()->setFocus();
    QTest::keyClick(window.getFields(0).last(), Qt::Key_Tab);
    QVERIFY(bar->hasFocus());
    makeWindow(getBoard("KS-Dev A", 40), smallest);
    raiseMonitoring();
    QApplication::setActiveWindow(panel->getWindow());
    QTRY_VERIFY(!getBar(Qt::Vertical)->isHidden());
    const QWidget* next = panel->getWindow()->findChild<QWidget*>("intervalSpinBox");
    const auto* const selector = panel->getWindow()->findChild<QWidget*>("cardComboBox");
    while (next != getBar(Qt::Vertical)) {
        QVERIFY(next != selector);
        next = next->nextInFocusChain();
    }
}

void TestPageScroller::anotherPageBeginsAtItsTop()
{
    TallPages window;
    window.outside->setFocus();
    auto* const bar = window.findChild<QScrollBar*>("pageScrollBar");
    QTRY_VERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    window.stack->setCurrentIndex(1);
    QTRY_VERIFY(isWholeInSight(*window.getFields(1).first()));
    QVERIFY(!isWholeInSight(*window.getFields(1).last()));
}

KESTOBOARD_TEST_MAIN(TestPageScroller)
#include "tst_page_scroller.moc"
