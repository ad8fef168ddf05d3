#include "app/Menus.h"

#include "app/AboutDialog.h"
#include "app/ActivityIndicator.h"
#include "app/DropTarget.h"
#include "app/KeyboardMap.h"
#include "app/Shutdown.h"
#include "app/WindowState.h"

#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <application/ConsoleWidget.h>
#include <application/FileDialogLook.h>
#include <foundation/Console.h>
#include <foundation/Debug.h>
#include <foundation/Theme.h>

#include <QActionGroup>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QUrl>

namespace Kestoboard
{

namespace
{

QKeySequence getKeys(const QString& keys)
{
    return QKeySequence::fromString(keys, QKeySequence::PortableText);
}

/// Opens a dialog that goes when it is closed; one of a kind at a time.
template <class Dialog>
void openOnce(Board::MainWindow* parent)
{
    auto* dialog = parent->findChild<Dialog*>(QString(), Qt::FindDirectChildrenOnly);
    if (dialog == nullptr) {
        dialog = new Dialog(parent);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

} // namespace

Menus::Menus(Board::MainWindow* panel, const MenuTargets& actedOn)
    : QObject(panel)
    , window(panel)
    , targets(actedOn)
{
    buildFileMenu();
    buildViewMenu();
    buildBoardMenu();
    buildConsoleMenu();
    buildHelpMenu();
    addMenuKey();
}

QMenu* Menus::addMenu(const QString& title)
{
    return window->menuBar()->addMenu(title);
}

template <class Work>
QAction* Menus::addAction(QMenu* menu, const char* iconName, const QString& text,
                          const QString& keys, Work work)
{
    QAction* const action = menu->addAction(Orvex::theme->getIcon(iconName), text);
    action->setShortcut(getKeys(keys));
    connect(action, &QAction::triggered, this, work);
    return action;
}

void Menus::buildFileMenu()
{
    QMenu* const menu = addMenu(tr("&File"));
    addAction(menu, "open", tr("&Open bitstream…"), QStringLiteral("Ctrl+O"),
              [this] { openBitstream(); });
    addAction(menu, "directory", tr("Show the folder of the &transcript"), {},
              [this] { openTranscriptDirectory(); });
    menu->addSeparator();
    QAction* const quit = addAction(menu, "quit", tr("&Quit"), QStringLiteral("Ctrl+Q"),
                                    [this] { targets.shutdown->requestWithQuestion(); });
    quit->setMenuRole(QAction::QuitRole);
}

void Menus::buildViewMenu()
{
    QMenu* const menu = addMenu(tr("&View"));
    Board::Folio* const folio = window->getFolio();
    const struct {
        const char* icon;
        QString text;
        QString keys;
        long index;
    } pages[] = {
        {"basic", tr("&Basic"), QStringLiteral("Ctrl+1"), folio->getBasicIndex()},
        {"monitoring", tr("&Monitoring"), QStringLiteral("Ctrl+2"), folio->getMonitoringIndex()},
        {"bitstream", tr("B&itstream"), QStringLiteral("Ctrl+3"), folio->getBitstreamIndex()},
        {"scope", tr("&Scope"), QStringLiteral("Ctrl+4"), folio->getScopeIndex()},
    };
    for (const auto& page : pages) {
        addAction(menu, page.icon, page.text, page.keys, [folio, index = page.index] {
            folio->raiseLeaf(static_cast<unsigned long>(index));
        });
    }
    menu->addSeparator();
    buildSchemeMenu(menu);
    addAction(menu, "", tr("&Reset layout"), {}, [this] { targets.state->reset(); });
}

void Menus::buildSchemeMenu(QMenu* parent)
{
    QMenu* const menu = parent->addMenu(Orvex::theme->getIcon("scheme"), tr("&Theme"));
    auto* const group = new QActionGroup(menu);
    const std::pair<SchemeChoice::Choice, QString> choices[] = {
        {SchemeChoice::Choice::System, tr("&As the desktop")},
        {SchemeChoice::Choice::Light, tr("&Light")},
        {SchemeChoice::Choice::Dark, tr("&Dark")},
    };
    for (const auto& [choice, text] : choices) {
        QAction* const action = addAction(
            menu, "", text, {}, [this, chosen = choice] { targets.schemes->choose(chosen); });
        action->setCheckable(true);
        action->setChecked(choice == targets.schemes->getChoice());
        group->addAction(action);
    }
}

void Menus::buildBoardMenu()
{
    QMenu* const menu = addMenu(tr("&Board"));
    Board::KSBaseHandler* const engine = window->getKSBaseHandler();
    addAction(menu, "refresh", tr("&Refresh the boards"), QStringLiteral("F5"),
              [engine] { engine->refreshTamsaMap(); });
    buildPatienceMenu(menu);
    buildTransferPatienceMenu(menu);
}

void Menus::buildPatienceMenu(QMenu* parent)
{
    QMenu* const menu =
        parent->addMenu(Orvex::theme->getIcon("time"), tr("Say that an &answer is late"));
    addChoices(menu,
               {{10, tr("After 1&0 seconds")},
                {30, tr("After &30 seconds")},
                {120, tr("After &2 minutes")},
                {0, tr("&Never")}},
               ActivityIndicator::getPatience(), &ActivityIndicator::setPatience);
}

void Menus::buildTransferPatienceMenu(QMenu* parent)
{
    QMenu* const menu =
        parent->addMenu(Orvex::theme->getIcon("time"), tr("Say that a &transfer is late"));
    addChoices(menu,
               {{0, tr("&Never")},
                {300, tr("After &5 minutes")},
                {900, tr("After &15 minutes")},
                {3600, tr("After &60 minutes")}},
               ActivityIndicator::getTransferPatience(), &ActivityIndicator::setTransferPatience);
}

/// One of several numbers, the current of which is marked.
void Menus::addChoices(QMenu* menu, const std::vector<std::pair<int, QString>>& choices,
                       int current, void (*choose)(int))
{
    auto* const group = new QActionGroup(menu);
    for (const auto& [number, text] : choices) {
        QAction* const action =
            addAction(menu, "", text, {}, [choose, chosen = number] { choose(chosen); });
        action->setCheckable(true);
        action->setChecked(number == current);
        group->addAction(action);
    }
}

/// The console's own actions, which work from everywhere once they stand in a menu of the window.
void Menus::buildConsoleMenu()
{
    auto* const console = window->findChild<Zandu::ConsoleWidget*>();
    if (console == nullptr) {
        return;
    }
    QMenu* const menu = addMenu(tr("&Console"));
    const QKeySequence findKeys = getKeys(QStringLiteral("Ctrl+F"));
    for (QAction* const action : console->actions()) {
        if (action->shortcut() == findKeys) {
            action->setShortcutContext(Qt::WindowShortcut);
            action->setText(tr("&Find"));
            menu->addAction(action);
        }
    }
    addAction(menu, "save", tr("&Save the console…"), QStringLiteral("Ctrl+S"),
              [console] { console->save(); });
    addAction(menu, "clear", tr("&Clear the view"), {}, [console] { console->clear(); });
}

void Menus::buildHelpMenu()
{
    QMenu* const menu = addMenu(tr("&Help"));
    addAction(menu, "keyboard", tr("&Keyboard map"), QStringLiteral("F1"),
              [this] { showKeyboardMap(); });
    QAction* const about =
        addAction(menu, "about", tr("&About Kestoboard"), {}, [this] { showAbout(); });
    about->setMenuRole(QAction::AboutRole);
}

/// The key that desktops give to the menus; the toolkit leaves it to the application.
void Menus::addMenuKey()
{
    const auto* const key = new QShortcut(getKeys(QStringLiteral("F10")), window);
    QMenuBar* const bar = window->menuBar();
    connect(key, &QShortcut::activated, bar,
            [bar] { bar->setActiveAction(bar->actions().first()); });
}

void Menus::openBitstream()
{
    auto* const dialog = new QFileDialog(window, tr("Open a bitstream"), QDir::currentPath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    const QString patterns =
        Orvex::isDebug() ? QStringLiteral("*.ksb *.bbs *.bts") : QStringLiteral("*.ksb");
    dialog->setNameFilters({tr("Bitstreams (%1)").arg(patterns), tr("All files (*)")});
    Zandu::arrangeFileDialog(dialog);
    connect(dialog, &QFileDialog::fileSelected, targets.drops, &DropTarget::offer);
    dialog->open();
}

void Menus::openTranscriptDirectory()
{
    const QString path = QDir::currentPath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        Orvex::console->warning(tr("No program on this desktop shows the folder %1, where the "
                                   "transcript ksbase.log is.")
                                    .arg(path)
                                    .toUtf8()
                                    .constData(),
                                "");
    }
}

void Menus::showKeyboardMap()
{
    openOnce<KeyboardMap>(window);
}

void Menus::showAbout()
{
    openOnce<AboutDialog>(window);
}

} // namespace Kestoboard
