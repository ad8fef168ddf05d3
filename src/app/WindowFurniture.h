#ifndef APP_WINDOWFURNITURE_H
#define APP_WINDOWFURNITURE_H

#include "app/SchemeChoice.h"
#include "app/WindowState.h"

#include <QString>

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

class ActivityIndicator;
class Shutdown;

/// What the application adds to a window of the panel: title, menus, the activity in the status
/// bar, remarks, files dropped on it, a watch over the transcript, and the layout of the run
/// before. It goes just before the window.
class WindowFurniture
{
public:
    /// Furnishes a window that is not shown yet.
    WindowFurniture(Board::MainWindow* panel, SchemeChoice* schemes, Shutdown* shutdown);

    WindowState& getState() { return state; }
    /// What the tool has not answered yet, as a sentence; empty when there is nothing.
    QString getUnfinished() const;

private:
    /// Text that is pasted or dropped into a field never becomes a second command.
    void keepFieldsToOneLine();
    void showTicksAtOnce();
    void addIndicator();
    void addRemarks();
    void letPagesScroll();
    void setTitle();
    void focusFirstControl();

    Board::MainWindow* const window;
    WindowState state;
    /// Belongs to the window.
    ActivityIndicator* indicator = nullptr;
};

} // namespace Kestoboard

#endif
