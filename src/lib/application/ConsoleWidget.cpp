#include <application/ConsoleWidget.h>

#include <application/ConsoleFindBar.h>
#include <application/ConsoleView.h>
#include <application/FileDialogLook.h>
#include <application/IconButton.h>
#include <application/NoticeBar.h>

#include <foundation/Console.h>
#include <foundation/Theme.h>

#include <QAction>
#include <QActionGroup>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QSaveFile>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace Zandu
{

namespace
{

constexpr int offeredLimits[] = {10000, 50000, ConsoleView::defaultLineLimit, 1000000};

QKeySequence getKeys(const QString& shortcut)
{
    return QKeySequence::fromString(shortcut, QKeySequence::PortableText);
}

/// Empty when all went well, else what went wrong.
QString write(const QString& path, const QByteArray& bytes)
{
    const QFileInfo place(path);
    if (place.exists() && !place.isFile()) {
        // A device or a pipe is written to; a file in its place would be its end.
        QFile device(path);
        const bool written = device.open(QIODevice::WriteOnly) &&
                             device.write(bytes) == bytes.size() && device.flush();
        return written ? QString() : device.errorString();
    }
    QSaveFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : file.errorString();
}

} // namespace

ConsoleWidget::ConsoleWidget(QWidget* parent)
    : QWidget(parent)
    , view(new ConsoleView(this))
    , findBar(new ConsoleFindBar(view, this))
    , notice(new NoticeBar(this))
    , filterMenu(new QMenu(this))
{
    createActions();
    createFilterActions();
    optionsMenu = createOptionsMenu();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(createHeader());
    layout->addWidget(view, 1);
    layout->addWidget(notice);
    layout->addWidget(findBar);
    setFocusProxy(view);

    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this, &ConsoleWidget::showContextMenu);
    connect(view, &ConsoleView::optionsChanged, this, &ConsoleWidget::optionsChanged);
    connect(view, &QPlainTextEdit::copyAvailable, copyAction, &QAction::setEnabled);

    if (Orvex::console != nullptr) {
        for (const Orvex::Message& message : Orvex::console->getRecentMessages()) {
            view->add(message);
        }
        connect(Orvex::console, &Orvex::Console::messageAdded, view, &ConsoleView::add);
    }
}

ConsoleWidget::~ConsoleWidget() = default;

QString ConsoleWidget::getText()
{
    view->showAll();
    return view->getText();
}

bool ConsoleWidget::saveTo(const QString& path)
{
    const QString text = getText();
    const QString failure = write(path, text.toUtf8() + '\n');
    const QString shownPath = QDir::toNativeSeparators(path);
    if (failure.isEmpty()) {
        const int lines = text.count(QLatin1Char('\n')) + 1;
        notice->inform(tr("The console is saved to %1 (lines: %2).")
                           .arg(shownPath, QLocale().toString(lines)));
    } else {
        notice->warn(tr("The console could not be saved to %1: %2.").arg(shownPath, failure));
    }
    return failure.isEmpty();
}

int ConsoleWidget::getLineLimit() const
{
    return view->getLineLimit();
}

void ConsoleWidget::setLineLimit(int limit)
{
    view->setLineLimit(limit);
}

bool ConsoleWidget::areTimesShown() const
{
    return view->areTimesShown();
}

void ConsoleWidget::setTimesShown(bool shown)
{
    view->setTimesShown(shown);
}

bool ConsoleWidget::areTimesCopied() const
{
    return view->areTimesCopied();
}

void ConsoleWidget::setTimesCopied(bool copied)
{
    view->setTimesCopied(copied);
}

bool ConsoleWidget::areLinesWrapped() const
{
    return view->areLinesWrapped();
}

void ConsoleWidget::setLinesWrapped(bool wrapped)
{
    view->setLinesWrapped(wrapped);
}

qreal ConsoleWidget::getFontSize() const
{
    return view->getFontSize();
}

void ConsoleWidget::setFontSize(qreal size)
{
    view->setFontSize(size);
}

void ConsoleWidget::find()
{
    findBar->open();
}

void ConsoleWidget::findNext()
{
    findBar->findNext();
}

void ConsoleWidget::findPrevious()
{
    findBar->findPrevious();
}

void ConsoleWidget::copy()
{
    view->copy();
}

void ConsoleWidget::selectAll()
{
    view->selectAll();
}

void ConsoleWidget::save()
{
    // Shown and not waited for: whoever waits for the board tool goes on in the meantime.
    auto* dialog = new QFileDialog(this, tr("Save the console"), QDir::currentPath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({tr("Text files (*.txt)"), tr("All files (*)")});
    dialog->selectFile(QStringLiteral("console.txt"));
    arrangeFileDialog(dialog);
    connect(dialog, &QFileDialog::fileSelected, this, &ConsoleWidget::saveTo);
    dialog->open();
}

void ConsoleWidget::clear()
{
    view->clearLines();
}

/// The title, and on its right what is done most often.
QWidget* ConsoleWidget::createHeader()
{
    filterButton = createIconButton("filter", tr("Which messages are shown"), this);
    filterButton->setIconSize(QSize(20, 16));
    filterButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    filterButton->setPopupMode(QToolButton::InstantPopup);
    filterButton->setMenu(filterMenu);
    QToolButton* optionsButton = createIconButton("settings", tr("Options of the console"), this);
    optionsButton->setPopupMode(QToolButton::InstantPopup);
    optionsButton->setMenu(optionsMenu);

    auto* header = new QWidget(this);
    auto* layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(new QLabel(tr("Console"), header));
    layout->addStretch(1);
    layout->addWidget(filterButton);
    for (QAction* action : {findAction, copyAction, saveAction, clearAction}) {
        layout->addWidget(createButton(action));
    }
    layout->addWidget(optionsButton);
    showFilter();
    return header;
}

void ConsoleWidget::createActions()
{
    findAction = createAction("find", tr("Find"), QStringLiteral("Ctrl+F"), &ConsoleWidget::find);
    createAction("next", tr("Next match"), QStringLiteral("F3"), &ConsoleWidget::findNext);
    createAction("previous", tr("Previous match"), QStringLiteral("Shift+F3"),
                 &ConsoleWidget::findPrevious);
    copyAction = createAction("copy", tr("Copy"), QString(), &ConsoleWidget::copy);
    copyAction->setEnabled(false);
    selectAllAction =
        createAction("select_all", tr("Select all"), QString(), &ConsoleWidget::selectAll);
    saveAction = createAction("save", tr("Save as text"), QString(), &ConsoleWidget::save);
    clearAction = createAction("clear", tr("Clear the view"), QString(), &ConsoleWidget::clear);
}

void ConsoleWidget::createFilterActions()
{
    const std::pair<Orvex::Level, QString> filters[] = {
        {Orvex::Level::Normal, tr("All messages")},
        {Orvex::Level::Warning, tr("Warnings and errors")},
        {Orvex::Level::Error, tr("Errors only")},
    };
    filterMenu->setTitle(tr("Show"));
    auto* group = new QActionGroup(filterMenu);
    for (const auto& [level, text] : filters) {
        QAction* action = group->addAction(text);
        action->setCheckable(true);
        action->setChecked(level == view->getLowestLevel());
        connect(action, &QAction::triggered, this, [this, lowest = level] {
            view->setLowestLevel(lowest);
            showFilter();
        });
    }
    filterMenu->addActions(group->actions());
}

QMenu* ConsoleWidget::createOptionsMenu()
{
    auto* menu = new QMenu(tr("Options"), this);
    menu->addAction(createSwitch(tr("Show times"), &ConsoleWidget::areTimesShown,
                                 &ConsoleWidget::setTimesShown));
    menu->addAction(createSwitch(tr("Copy and save with times"), &ConsoleWidget::areTimesCopied,
                                 &ConsoleWidget::setTimesCopied));
    menu->addAction(createSwitch(tr("Wrap long lines"), &ConsoleWidget::areLinesWrapped,
                                 &ConsoleWidget::setLinesWrapped));
    menu->addSeparator();
    const std::tuple<QString, const char*, int> sizes[] = {
        {tr("Larger text"), "Ctrl++", 1},
        {tr("Smaller text"), "Ctrl+-", -1},
        {tr("Text size of the system"), "Ctrl+0", 0},
    };
    for (const auto& [text, keys, step] : sizes) {
        QAction* action = menu->addAction(text);
        action->setShortcut(getKeys(QString::fromLatin1(keys)));
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        connect(action, &QAction::triggered, this, [this, change = step] {
            change == 0 ? view->resetFontSize() : setFontSize(getFontSize() + change);
        });
    }
    menu->addSeparator();
    menu->addMenu(createLimitMenu(menu));
    return menu;
}

QMenu* ConsoleWidget::createLimitMenu(QWidget* parent)
{
    auto* menu = new QMenu(tr("Lines kept"), parent);
    auto* group = new QActionGroup(menu);
    for (const int limit : offeredLimits) {
        QAction* action = group->addAction(QLocale().toString(limit));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, limit] { setLineLimit(limit); });
        connect(menu, &QMenu::aboutToShow, action,
                [this, action, limit] { action->setChecked(limit == getLineLimit()); });
    }
    menu->addActions(group->actions());
    return menu;
}

QAction* ConsoleWidget::createAction(const char* iconName, const QString& text,
                                     const QString& shortcut, void (ConsoleWidget::*work)())
{
    auto* action = new QAction(Orvex::theme->getIcon(iconName), text, this);
    action->setShortcut(getKeys(shortcut));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, work);
    addAction(action);
    return action;
}

/// A choice that always shows how the console stands, whoever changed it.
QAction* ConsoleWidget::createSwitch(const QString& text, bool (ConsoleWidget::*isOn)() const,
                                     void (ConsoleWidget::*turn)(bool))
{
    auto* action = new QAction(text, this);
    action->setCheckable(true);
    action->setChecked((this->*isOn)());
    connect(action, &QAction::triggered, this, turn);
    connect(this, &ConsoleWidget::optionsChanged, action,
            [this, action, isOn] { action->setChecked((this->*isOn)()); });
    return action;
}

QToolButton* ConsoleWidget::createButton(QAction* action)
{
    QToolButton* button = createIconButton("", action->text(), this);
    button->setDefaultAction(action);
    return button;
}

void ConsoleWidget::showContextMenu(const QPoint& place)
{
    // Not waited for either.
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions({copyAction, selectAllAction});
    menu->addSeparator();
    menu->addActions({findAction, saveAction, clearAction});
    menu->addSeparator();
    menu->addMenu(filterMenu);
    menu->addMenu(optionsMenu);
    menu->popup(view->viewport()->mapToGlobal(place));
}

/// The button tells what is left out.
void ConsoleWidget::showFilter()
{
    for (const QAction* action : filterMenu->actions()) {
        if (action->isChecked()) {
            filterButton->setText(action->text());
        }
    }
}

} // namespace Zandu
