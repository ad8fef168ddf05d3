#include "app/KeyboardMap.h"

#include <application/ConsoleWidget.h>
#include <application/FileSystemBrowser.h>
#include <foundation/Debug.h>
#include <foundation/Theme.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Kestoboard
{

namespace
{

const int usualHeight = 460;

/// The text of an action as it reads, without the mark of its access key.
QString getPlainText(const QAction& action)
{
    QString text = action.text();
    text.remove(QLatin1Char('&'));
    return text.remove(QChar(0x2026));
}

/// The actions of the menus as they stand there, then those of the parts of the window.
QList<QAction*> getActions(const QMainWindow& window)
{
    QList<QAction*> actions;
    for (const QAction* const title : window.menuBar()->actions()) {
        if (title->menu() != nullptr) {
            actions += title->menu()->actions();
        }
    }
    for (QAction* const action : window.findChildren<QAction*>()) {
        if (!actions.contains(action)) {
            actions += action;
        }
    }
    return actions;
}

template <class Part>
bool belongsTo(const QAction& action)
{
    const QList<QWidget*> owners = action.associatedWidgets();
    return std::any_of(owners.begin(), owners.end(), [](const QWidget* owner) {
        return qobject_cast<const Part*>(owner) != nullptr;
    });
}

/// The part of the window in which the keys of an action work, for the end of a sentence; empty
/// when they work everywhere.
QString getPlace(const QAction& action)
{
    if (action.shortcutContext() != Qt::WidgetWithChildrenShortcut) {
        return {};
    }
    if (belongsTo<Zandu::ConsoleWidget>(action)) {
        return KeyboardMap::tr("in the console");
    }
    if (belongsTo<Zandu::FileSystemBrowser>(action)) {
        return KeyboardMap::tr("in the browser");
    }
    return {};
}

} // namespace

KeyboardMap::KeyboardMap(QMainWindow* window)
    : QDialog(window)
    , list(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("keyboardMap"));
    setWindowTitle(tr("Keyboard map"));
    list->setAccessibleName(tr("Keyboard map"));
    list->setHeaderLabels({tr("Keys"), tr("Effect")});
    list->setRootIsDecorated(false);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    Orvex::theme->enrich(list);
    addActions(*window);
    addFixedKeys();
    // Where there is no room for the longest effect the list is scrolled.
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(buttons);
    resize(getListWidth() + layout->contentsMargins().left() + layout->contentsMargins().right(),
           usualHeight);
}

/// The width in which every row of the list is seen whole.
int KeyboardMap::getListWidth() const
{
    ensurePolished();
    int width = 2 * list->frameWidth() + list->verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < list->columnCount(); ++column) {
        list->resizeColumnToContents(column);
        width += list->columnWidth(column);
    }
    return width;
}

void KeyboardMap::addActions(const QMainWindow& window)
{
    for (const QAction* const action : getActions(window)) {
        if (!action->shortcut().isEmpty() && !action->text().isEmpty()) {
            const QString effect = getPlainText(*action);
            const QString place = getPlace(*action);
            addRow(action->shortcut().toString(QKeySequence::NativeText),
                   place.isEmpty() ? effect
                                   : tr("%1, %2", "an effect and where").arg(effect, place));
        }
    }
}

/// What the parts of the window do with keys without telling it.
void KeyboardMap::addFixedKeys()
{
    addRow(tr("Tab, Shift+Tab"), tr("Next and previous control"));
    addRow(tr("Space"), tr("Press the button that has the focus"));
    addRow(tr("F10, Alt+letter"), tr("Open the menus"));
    addRow(tr("Ctrl+wheel"), tr("Text size of the console, over the console"));
    addRow(tr("Ctrl+C, Ctrl+A"), tr("Copy, select all, in the console"));
    addRow(tr("Esc"), tr("Close the find bar, in the find bar"));
    addRow(tr("Ctrl+L"), tr("Path field of the file browser, in the browser"));
    addRow(tr("Return"), tr("Enter the directory, in the browser"));
    addRow(tr("Backspace, Alt+Up"), tr("To the parent directory, in the browser"));
    if (Orvex::isDebug()) {
        addRow(tr("Up, Down"), tr("Earlier and later commands, in the command field"));
        addRow(tr("Return"), tr("Send the command, in the command field"));
    }
}

void KeyboardMap::addRow(const QString& keys, const QString& effect)
{
    new QTreeWidgetItem(list, {keys, effect});
}

} // namespace Kestoboard
