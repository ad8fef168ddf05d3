#include "app/PanelWindow.h"

#include <Board/MainWindow.h>

#include <QApplication>

namespace Kestoboard
{

Board::MainWindow* getPanelWindow()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<Board::MainWindow*>(widget)) {
            return window;
        }
    }
    return nullptr;
}

} // namespace Kestoboard
