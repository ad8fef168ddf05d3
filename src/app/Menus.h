#ifndef APP_MENUS_H
#define APP_MENUS_H

#include "app/SchemeChoice.h"

#include <QObject>
#include <QString>

#include <utility>
#include <vector>

class QAction;
class QMenu;

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

class DropTarget;
class Shutdown;
class WindowState;

/// What the menus of a window act on; all of it outlives the window.
struct MenuTargets {
    Shutdown* shutdown;
    WindowState* state;
    SchemeChoice* schemes;
    /// Belongs to the window.
    DropTarget* drops;
};

/// The menus of the panel's window, with the shortcuts of the desktop.
class Menus : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window.
    Menus(Board::MainWindow* panel, const MenuTargets& actedOn);

    /// Asks for a bitstream file and shows it chosen.
    void openBitstream();
    /// Shows the directory that the transcript is written to.
    void openTranscriptDirectory();
    void showKeyboardMap();
    void showAbout();

private:
    void buildFileMenu();
    void buildViewMenu();
    void buildSchemeMenu(QMenu* parent);
    void buildBoardMenu();
    void buildPatienceMenu(QMenu* parent);
    void buildTransferPatienceMenu(QMenu* parent);
    void addChoices(QMenu* menu, const std::vector<std::pair<int, QString>>& choices, int current,
                    void (*choose)(int));
    void buildConsoleMenu();
    void buildHelpMenu();
    void addMenuKey();
    QMenu* addMenu(const QString& title);
    template <class Work>
    QAction* addAction(QMenu* menu, const char* iconName, const QString& text, const QString& keys,
                       Work work);

    Board::MainWindow* const window;
    const MenuTargets targets;
};

} // namespace Kestoboard

#endif
