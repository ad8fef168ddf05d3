#ifndef APP_WINDOWSTATE_H
#define APP_WINDOWSTATE_H

class QSettings;

namespace Board
{
class MainWindow;
} // namespace Board

namespace Zandu
{
class ConsoleWidget;
} // namespace Zandu

namespace Kestoboard
{

/// What a window remembers from one run to the next: its place and size, how its height is divided,
/// and the look of the console. What another version of the panel has stored, and nonsense, is
/// passed over. The window outlives it.
class WindowState
{
public:
    explicit WindowState(Board::MainWindow* panel);

    /// Gives the window what was stored, or else its first layout.
    void restore();
    void save() const;
    /// Gives the window its first layout. What is stored changes with the next save.
    void reset();

private:
    void restoreConsole(const QSettings& settings);

    Board::MainWindow* const window;
    Zandu::ConsoleWidget* const console;
};

} // namespace Kestoboard

#endif
