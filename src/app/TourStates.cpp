#include "app/TourStates.h"

#include "app/AboutDialog.h"
#include "app/ActivityIndicator.h"
#include "app/ChosenBitstream.h"
#include "app/KeyboardMap.h"
#include "app/LastWords.h"
#include "app/LastWordsDialog.h"
#include "app/Menus.h"
#include "app/Shutdown.h"
#include "app/StartFailure.h"
#include "app/StartupWait.h"
#include "app/ToolWatch.h"
#include "app/WorkingDirectory.h"

#include <Board/BrowseFolio.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <application/ConsoleWidget.h>
#include <foundation/Encoding.h>
#include <foundation/Text.h>

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

#include <chrono>
#include <memory>
#include <utility>

namespace Kestoboard
{

namespace
{

using namespace std::chrono_literals;

const std::chrono::milliseconds glance = 20ms;
const QSize smallest(800, 600);
/// The entry of a menu that is shown as lying under the pointer.
const int pointedEntry = 1;

void raiseBrowsePage(const Board::MainWindow& window, long (Board::BrowseFolio::*index)() const)
{
    Board::Folio* const folio = window.getFolio();
    folio->raiseLeaf(static_cast<unsigned long>(folio->getBitstreamIndex()));
    auto* const pages = window.findChild<Board::BrowseFolio*>();
    pages->raiseLeaf(static_cast<unsigned long>((pages->*index)()));
}

/// Leaves the console as it was before the search, at its end.
void endSearch(const Zandu::ConsoleWidget& console)
{
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(console.findChild<QLineEdit*>(), &escape);
    console.findChild<QToolButton*>(QStringLiteral("consoleJumpButton"))->click();
}

/// The window with the menu open over it.
QPixmap getPicture(Board::MainWindow* window, QMenu* menu, const QPoint& place)
{
    menu->popup(window->mapToGlobal(place));
    menu->setActiveAction(menu->actions().at(pointedEntry));
    QPixmap picture = window->grab();
    QPainter(&picture).drawPixmap(place, menu->grab());
    menu->hide();
    return picture;
}

} // namespace

TourStates::TourStates(Board::MainWindow* panel, const QString& directory, WaitFor waiter,
                       Save saver)
    : window(panel)
    , releases(directory)
    , waitFor(std::move(waiter))
    , save(std::move(saver))
{
}

QByteArray TourStates::getScenario()
{
    return R"([[board]]
name = "KS-Dev 1 Aurora"
selected = true
    [[board.channel]]
    name = "VCore"
    voltage = 1.0
    current = 0.42

[[fault]]
kind = "hold"
command = "board spi flash program"
file = "flash-release"
times = 0

[[fault]]
kind = "hold"
command = "board set force_bit"
file = "bit-release"
times = 0

[[fault]]
kind = "refused"
command = "chip bitstream load"
message = "blinker.ksb: Permission denied"
times = 0
)";
}

void TourStates::visit(const QString& bitstream)
{
    showEmptyList();
    showRunning(bitstream);
    showLate();
    showFailure(bitstream);
    showSearch();
    showMenus();
    showDialogs();
    showBoxes();
    showSmallPages();
}

void TourStates::showEmptyList()
{
    raiseBrowsePage(*window, &Board::BrowseFolio::getRecentIndex);
    QCoreApplication::processEvents();
    save(window->grab(), QStringLiteral("recent-empty"));
}

/// Pictures the window as soon as it shows what is waited for, and only then lets the answer go.
void TourStates::saveWhile(const std::function<bool()>& isThere, const QString& name,
                           const QString& release, const std::function<void()>& command)
{
    QFile file(releases.filePath(release));
    file.remove();
    bool isSaved = false;
    QTimer ticker;
    connect(&ticker, &QTimer::timeout, this, [&] {
        if (!isSaved && isThere()) {
            isSaved = true;
            save(window->grab(), name);
            static_cast<void>(file.open(QIODevice::WriteOnly));
        }
    });
    ticker.start(glance);
    command();
}

void TourStates::showRunning(const QString& bitstream)
{
    showChosenBitstream(*window, bitstream);
    saveWhile([this] { return !window->statusBar()->currentMessage().isEmpty(); },
              QStringLiteral("running"), QStringLiteral("flash-release"),
              [&] { window->getKSBaseHandler()->programFlash(Orvex::getLabel(bitstream)); });
    waitForMessageToGo();
}

void TourStates::showLate()
{
    const auto* const indicator = window->findChild<ActivityIndicator*>();
    ActivityIndicator::setPatience(1);
    saveWhile(
        [&] {
            return !window->statusBar()->currentMessage().isEmpty() &&
                   indicator->getIconName() == "warning";
        },
        QStringLiteral("late"), QStringLiteral("bit-release"),
        [this] { window->getKSBaseHandler()->setForceBit(true); });
    waitForMessageToGo();
}

void TourStates::waitForMessageToGo()
{
    waitFor(tr("the message of the engine to go"),
            [this] { return window->statusBar()->currentMessage().isEmpty(); });
}

void TourStates::showFailure(const QString& bitstream)
{
    window->getKSBaseHandler()->sendBitstream(Orvex::getLabel(bitstream));
    const auto* const indicator = window->findChild<ActivityIndicator*>();
    waitFor(tr("the verdict on the load"), [&] { return indicator->getIconName() == "error"; });
    save(window->grab(), QStringLiteral("failed"));
    QSettings().setValue(QStringLiteral("recentLoadList"), QStringList(bitstream));
    window->findChild<Board::BrowseFolio::RecentWidget*>()->refresh();
    raiseBrowsePage(*window, &Board::BrowseFolio::getRecentIndex);
    save(window->grab(), QStringLiteral("recent"));
}

void TourStates::showSearch()
{
    auto* const console = window->findChild<Zandu::ConsoleWidget*>();
    console->setTimesShown(true);
    console->find();
    for (QLineEdit* const field : console->findChildren<QLineEdit*>()) {
        field->setText(QStringLiteral("successfully"));
    }
    console->findNext();
    QCoreApplication::processEvents();
    save(window->grab(), QStringLiteral("console-find"));
    console->setTimesShown(false);
    endSearch(*console);
    QCoreApplication::processEvents();
}

void TourStates::showMenus()
{
    const QMenuBar* const bar = window->menuBar();
    int number = 0;
    for (QAction* const title : bar->actions()) {
        const QPoint place = bar->mapTo(window, bar->actionGeometry(title).bottomLeft());
        save(getPicture(window, title->menu(), place), QStringLiteral("menu-%1").arg(++number));
    }
}

void TourStates::showDialogs()
{
    window->findChild<Menus*>()->openBitstream();
    auto* const chooser = window->findChild<QFileDialog*>();
    const auto* const files = chooser->findChild<QTreeView*>();
    const bool hasFiles = !QDir().entryList({QStringLiteral("*.ksb")}, QDir::Files).isEmpty();
    // It reads the directory on a thread of its own.
    if (files != nullptr && hasFiles) {
        waitFor(tr("the files to choose from"),
                [files] { return files->model()->rowCount(files->rootIndex()) > 0; });
    }
    QCoreApplication::processEvents();
    save(chooser->grab(), QStringLiteral("dialog-open"));
    chooser->close();

    AboutDialog about(window);
    KeyboardMap keyboardMap(window);
    LastWords::setReason(ToolWatch::getEnd(QProcess::NormalExit, 1).toStdString());
    LastWordsDialog lastWords(Orvex::getReadable(LastWords::getText()),
                              QStringLiteral("ksbase-20260401-093000-000.log"),
                              [] { return true; });
    LastWords::setReason({});
    StartupWait wait;
    const std::pair<QDialog*, const char*> dialogs[] = {
        {&about, "dialog-about"},
        {&keyboardMap, "dialog-keyboard"},
        {&lastWords, "dialog-ended"},
    };
    for (const auto& [dialog, name] : dialogs) {
        dialog->show();
        QCoreApplication::processEvents();
        save(dialog->grab(), QString::fromLatin1(name));
        dialog->close();
    }
    waitFor(tr("the waiting dialog of the start"), [&wait] { return wait.isVisible(); });
    save(wait.grab(), QStringLiteral("dialog-starting"));
    wait.hide();
}

void TourStates::showBoxes()
{
    const std::unique_ptr<QMessageBox> question(Shutdown::makeQuestion(window));
    const std::unique_ptr<QMessageBox> inUse(WorkingDirectory::makeBox(tr("Another Kestoboard")));
    const std::unique_ptr<QMessageBox> failure(StartFailure::getToolMissing().makeBox());
    const std::pair<QMessageBox*, const char*> boxes[] = {
        {question.get(), "dialog-leave"},
        {inUse.get(), "dialog-directory-in-use"},
        {failure.get(), "dialog-no-tool"},
    };
    for (const auto& [box, name] : boxes) {
        box->show();
        QCoreApplication::processEvents();
        save(box->grab(), QString::fromLatin1(name));
        box->hide();
    }
}

void TourStates::showSmallPages()
{
    window->resize(smallest);
    Board::Folio* const folio = window->getFolio();
    const std::pair<long, const char*> pages[] = {
        {folio->getBasicIndex(), "small-basic"},
        {folio->getMonitoringIndex(), "small-monitoring"},
        {folio->getBitstreamIndex(), "small-bitstream"},
        {folio->getScopeIndex(), "small-scope"},
    };
    for (const auto& [index, name] : pages) {
        folio->raiseLeaf(static_cast<unsigned long>(index));
        QCoreApplication::processEvents();
        save(window->grab(), QString::fromLatin1(name));
    }
}

} // namespace Kestoboard
