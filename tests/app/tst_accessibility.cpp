// The panel for those who do not see it, or have no mouse.

#include "app/AboutDialog.h"
#include "app/KeyboardMap.h"
#include "app/LastWordsDialog.h"
#include "app/Shutdown.h"
#include "app/StartFailure.h"
#include "app/StartupWait.h"
#include "app/WindowFurniture.h"
#include "app/WorkingDirectory.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/TestMain.h"

#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <application/ConsoleWidget.h>
#include <foundation/Theme.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollBar>
#include <QSet>
#include <QSettings>

using Kestoboard::SchemeChoice;
using Kestoboard::WindowFurniture;
using Test::Bench;
using Test::Panel;

namespace
{

const int pageCount = 4;
const int monitoringPage = 1;

/// What a person acts on or reads from, and so has to be told apart from others.
bool needsName(const QAccessibleInterface& face)
{
    switch (face.role()) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::List:
    case QAccessible::Tree:
    case QAccessible::Table:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::ProgressBar:
    case QAccessible::Dialog:
    case QAccessible::AlertMessage:
        return true;
    default:
        return face.state().focusable && !face.state().invisible;
    }
}

/// A part that has no name of its own: the field inside a spin box, the list of a combo box.
bool isPart(const QAccessibleInterface& face)
{
    const auto* const widget = qobject_cast<const QWidget*>(face.object());
    if (widget != nullptr && widget->parentWidget() != nullptr &&
        widget->parentWidget()->inherits("QComboBoxPrivateContainer")) {
        return true;
    }
    return widget != nullptr &&
           (widget->objectName().startsWith("qt_") || widget->focusProxy() != nullptr ||
            (widget->parentWidget() != nullptr && widget->parentWidget()->focusProxy() == widget));
}

QString describe(const QAccessibleInterface& face)
{
    const QObject* const object = face.object();
    const QObject* const parent = object != nullptr ? object->parent() : nullptr;
    return QString("%1 (role %2) in %3")
        .arg(object != nullptr ? object->metaObject()->className() : "an entry")
        .arg(face.role())
        .arg(parent != nullptr ? parent->metaObject()->className() : "nothing");
}

/// Adds what lacks a name, below the interface and itself.
void collectNameless(QAccessibleInterface* face, QStringList* nameless, int* visited)
{
    if (face == nullptr || !face->isValid() || face->state().invisible) {
        return;
    }
    ++*visited;
    if (needsName(*face) && !isPart(*face) && face->text(QAccessible::Name).isEmpty()) {
        *nameless += describe(*face);
    }
    for (int index = 0; index < face->childCount(); ++index) {
        collectNameless(face->child(index), nameless, visited);
    }
}

/// What is without a name in a shown widget; "nothing visited" when the walk has gone nowhere.
QStringList getNameless(QWidget* root)
{
    QStringList nameless;
    int visited = 0;
    collectNameless(QAccessible::queryAccessibleInterface(root), &nameless, &visited);
    nameless.removeDuplicates();
    return visited > 3 ? nameless : QStringList("nothing visited");
}

/// Of buttons that exclude one another the tabulator reaches the one that is pressed, and the arrow
/// keys the others.
bool isBesideAReachedOne(const QWidget& widget, const QSet<QWidget*>& reached)
{
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    if (button == nullptr || button->group() == nullptr || !button->group()->exclusive()) {
        return false;
    }
    for (QAbstractButton* const other : button->group()->buttons()) {
        if (reached.contains(other)) {
            return true;
        }
    }
    return false;
}

/// The letter that chooses an entry in its menu, small; empty for none.
QString getLetter(const QAction& action)
{
    const int mark = action.text().indexOf('&');
    return mark < 0 ? QString() : action.text().mid(mark + 1, 1).toLower();
}

/// How a failing test names a widget.
QString describe(int page, const QWidget& widget)
{
    return QString("page %1: %2 \"%3\" in %4")
        .arg(page)
        .arg(widget.metaObject()->className(), widget.accessibleName() + widget.objectName(),
             widget.parentWidget()->metaObject()->className());
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everythingOnEveryPageHasAName_data();
    void everythingOnEveryPageHasAName();
    void everythingInEveryDialogHasAName();
    void everyMenuEntryHasANameAndAKeyOfItsMenu();
    void theTabulatorReachesEveryControl_data();
    void theTabulatorReachesEveryControl();
    void theFocusCanBeSeen_data();
    void theFocusCanBeSeen();

private:
    void makePanel();
    QWidget* getWindow() const { return panel->getWindow(); }
    void raisePage(int page);
    /// Everything that the tabulator goes to, until it comes round.
    QList<QWidget*> walk() const;

    QScopedPointer<Test::DebugMode> mode;
    QScopedPointer<Bench> bench;
    QScopedPointer<Panel> panel;
    QScopedPointer<SchemeChoice> schemes;
    QScopedPointer<Kestoboard::Shutdown> shutdown;
    QScopedPointer<WindowFurniture> furniture;
};

void TestAccessibility::init()
{
    QSettings().clear();
    bench.reset(new Bench);
    // So many that their page has to be scrolled.
    const QString channel = "[[board.channel]]\nname = \"Rail\"\nvoltage = 1.0\n";
    bench->setScenario(Bench::board("KS-Dev A", "selected = true") + channel.repeated(60));
    bench->writeFile("example.cmd", "board list\n");
    schemes.reset(new SchemeChoice);
    shutdown.reset(new Kestoboard::Shutdown);
}

void TestAccessibility::makePanel()
{
    panel.reset(new Panel);
    furniture.reset(new WindowFurniture(panel->getWindow(), schemes.data(), shutdown.data()));
    getWindow()->show();
    QApplication::setActiveWindow(getWindow());
    QVERIFY(QTest::qWaitForWindowActive(getWindow()));
}

void TestAccessibility::cleanup()
{
    furniture.reset();
    panel.reset();
    shutdown.reset();
    schemes.reset();
    bench.reset();
    mode.reset();
}

/// The pages, and both halves of the Bitstream page.
void TestAccessibility::raisePage(int page)
{
    auto* const halves = panel->find<Board::BrowseFolio>();
    halves->raiseLeaf(page == pageCount ? 1 : 0);
    panel->getFolio()->raiseLeaf(static_cast<unsigned long>(
        page == pageCount ? panel->getFolio()->getBitstreamIndex() : page));
    QTRY_VERIFY(panel->getEngine()->getCommandHandlers().isEmpty());
    if (page == monitoringPage) {
        QTRY_VERIFY(getWindow()->findChild<QScrollBar*>("pageScrollBar")->isVisible());
    }
}

void TestAccessibility::everythingOnEveryPageHasAName_data()
{
    QTest::addColumn<bool>("isDebug");
    QTest::newRow("plain") << false;
    QTest::newRow("debug") << true;
}

void TestAccessibility::everythingOnEveryPageHasAName()
{
    QFETCH(bool, isDebug);
    mode.reset(new Test::DebugMode(isDebug));
    makePanel();
    panel->find<Zandu::ConsoleWidget>()->find();
    for (int page = 0; page <= pageCount; ++page) {
        raisePage(page);
        const QStringList nameless = getNameless(getWindow());
        QVERIFY2(nameless.isEmpty(), qPrintable(nameless.join('\n')));
    }
}

void TestAccessibility::everythingInEveryDialogHasAName()
{
    makePanel();
    Kestoboard::AboutDialog about(getWindow());
    Kestoboard::KeyboardMap keyboardMap(panel->getWindow());
    Kestoboard::LastWordsDialog lastWords("The end", "kept.log", [] { return true; });
    Kestoboard::StartupWait wait;
    const QScopedPointer<QMessageBox> leave(Kestoboard::Shutdown::makeQuestion(nullptr));
    const QScopedPointer<QMessageBox> inUse(Kestoboard::WorkingDirectory::makeBox("Another"));
    const QScopedPointer<QMessageBox> failure(Kestoboard::StartFailure::getToolMissing().makeBox());
    for (QWidget* const dialog : std::initializer_list<QWidget*>{
             &about, &keyboardMap, &lastWords, &wait, leave.data(), inUse.data(), failure.data()}) {
        dialog->show();
        const QStringList nameless = getNameless(dialog);
        QVERIFY2(nameless.isEmpty(), qPrintable(dialog->objectName() + '\n' + nameless.join('\n')));
        QVERIFY2(!dialog->windowTitle().isEmpty(), qPrintable(dialog->objectName()));
        dialog->hide();
    }
}

void TestAccessibility::everyMenuEntryHasANameAndAKeyOfItsMenu()
{
    makePanel();
    int entries = 0;
    const QMenuBar* const bar = panel->getWindow()->menuBar();
    QList<const QWidget*> menus{bar};
    for (const QMenu* const menu : bar->findChildren<QMenu*>()) {
        menus += menu;
    }
    for (const QWidget* const menu : qAsConst(menus)) {
        QSet<QString> letters;
        for (const QAction* const action : menu->actions()) {
            if (action->isSeparator()) {
                continue;
            }
            ++entries;
            const QString letter = getLetter(*action);
            QVERIFY2(!letter.isEmpty(), qPrintable(action->text()));
            // Two entries of one letter take two presses: the first would not act.
            QVERIFY2(!letters.contains(letter), qPrintable(action->text()));
            letters.insert(letter);
        }
    }
    QVERIFY(entries > 20);
}

void TestAccessibility::theTabulatorReachesEveryControl_data()
{
    everythingOnEveryPageHasAName_data();
}

QList<QWidget*> TestAccessibility::walk() const
{
    QList<QWidget*> reached;
    for (int steps = 0; steps < 200; ++steps) {
        QWidget* const focused = QApplication::focusWidget();
        if (focused != nullptr && reached.contains(focused)) {
            break;
        }
        if (focused != nullptr) {
            reached += focused;
        }
        // A text that takes the tabulator as a character would end the walk.
        QTest::keyClick(focused != nullptr ? focused : getWindow(), Qt::Key_Tab);
    }
    return reached;
}

void TestAccessibility::theTabulatorReachesEveryControl()
{
    QFETCH(bool, isDebug);
    mode.reset(new Test::DebugMode(isDebug));
    makePanel();
    panel->find<Zandu::ConsoleWidget>()->find();
    for (int page = 0; page <= pageCount; ++page) {
        raisePage(page);
        const QList<QWidget*> order = walk();
        const QSet<QWidget*> reached(order.begin(), order.end());
        QVERIFY(reached.size() > 5);
        for (QWidget* const widget : getWindow()->findChildren<QWidget*>()) {
            const bool isControl = (widget->focusPolicy() & Qt::TabFocus) != 0 ||
                                   qobject_cast<QAbstractButton*>(widget) != nullptr;
            if (!isControl || !widget->isVisible() || !widget->isEnabled() ||
                widget->focusProxy() != nullptr || widget->objectName().startsWith("qt_") ||
                widget->objectName() == "consoleJumpButton" ||
                // The button that empties a field does what keys in the field do.
                qobject_cast<QLineEdit*>(widget->parentWidget()) != nullptr) {
                continue;
            }
            QVERIFY2(reached.contains(widget) || isBesideAReachedOne(*widget, reached),
                     qPrintable(describe(page, *widget)));
        }
    }
}

void TestAccessibility::theFocusCanBeSeen_data()
{
    QTest::addColumn<SchemeChoice::Choice>("choice");
    QTest::newRow("light") << SchemeChoice::Choice::Light;
    QTest::newRow("dark") << SchemeChoice::Choice::Dark;
}

void TestAccessibility::theFocusCanBeSeen()
{
    QFETCH(SchemeChoice::Choice, choice);
    QApplication::setCursorFlashTime(0);
    mode.reset(new Test::DebugMode(true));
    schemes->choose(choice);
    makePanel();
    for (int page = 0; page <= pageCount; ++page) {
        raisePage(page);
        for (QWidget* const widget : walk()) {
            widget->setFocus(Qt::TabFocusReason);
            const QImage focused = widget->grab().toImage();
            widget->clearFocus();
            QVERIFY2(widget->grab().toImage() != focused, qPrintable(describe(page, *widget)));
        }
    }
}

KESTOBOARD_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
