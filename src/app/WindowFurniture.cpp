#include "app/WindowFurniture.h"

#include "app/ActivityIndicator.h"
#include "app/DropTarget.h"
#include "app/Menus.h"
#include "app/SimulatedTool.h"

#include <Board/BrowseFolio.h>
#include <Board/MainWindow.h>

#include <QCoreApplication>
#include <QDir>
#include <QStatusBar>

namespace Kestoboard
{

WindowFurniture::WindowFurniture(Board::MainWindow* panel, SchemeChoice* schemes,
                                 Shutdown* shutdown)
    : window(panel)
    , state(panel)
{
    setTitle();
    addIndicator();
    auto* const drops = new DropTarget(window);
    new Menus(window, {shutdown, &state, schemes, drops});
    state.restore();
    focusFirstControl();
}

void WindowFurniture::setTitle()
{
    const QString place = QDir(QDir::currentPath()).dirName();
    window->setWindowTitle(
        SimulatedTool::isEnabled()
            ? QCoreApplication::translate("Kestoboard::WindowFurniture",
                                          "%1 – Kestoboard on simulated boards")
                  .arg(place)
            : QCoreApplication::translate("Kestoboard::WindowFurniture", "%1 – Kestoboard")
                  .arg(place));
}

void WindowFurniture::addIndicator()
{
    QStatusBar* const bar = window->statusBar();
    // Before the label that the window has put there.
    bar->insertPermanentWidget(0, new ActivityIndicator(window->getKSBaseHandler(), bar));
}

/// The page that shows at the start is there to choose a file.
void WindowFurniture::focusFirstControl()
{
    if (auto* const recent = window->findChild<Board::BrowseFolio::RecentWidget*>()) {
        recent->setFocus();
    }
}

} // namespace Kestoboard
