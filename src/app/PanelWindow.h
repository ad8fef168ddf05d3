#ifndef APP_PANELWINDOW_H
#define APP_PANELWINDOW_H

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

/// The panel's window, also while its constructor waits for the board tool; null when there is
/// none.
Board::MainWindow* getPanelWindow();

} // namespace Kestoboard

#endif
