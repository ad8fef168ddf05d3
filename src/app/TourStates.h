#ifndef APP_TOURSTATES_H
#define APP_TOURSTATES_H

#include <QByteArray>
#include <QDir>
#include <QObject>
#include <QPixmap>
#include <QString>

#include <functional>

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

/// What the tour shows of one window beside its pages: how a command runs, is late and fails, the
/// search in the console, the menus and the dialogs, and every page in the smallest window.
class TourStates : public QObject
{
    Q_OBJECT

public:
    /// Serves events until the condition holds; the text says what is waited for.
    using WaitFor = std::function<void(const QString&, const std::function<bool()>&)>;
    /// Saves a picture under a name without suffixes.
    using Save = std::function<void(const QPixmap&, const QString&)>;

    /// The directory is that of the scenario.
    TourStates(Board::MainWindow* panel, const QString& directory, WaitFor waiter, Save saver);

    /// The bench on which the states come about, in the language of scenarios. Two of its answers
    /// are held back until a file is in the directory of the scenario, so that the state before is
    /// there for as long as it takes to picture it.
    static QByteArray getScenario();

    /// `bitstream` is chosen on the Bitstream page of the window.
    void visit(const QString& bitstream);

private:
    void showEmptyList();
    void showFailure(const QString& bitstream);
    void showRunning(const QString& bitstream);
    void showLate();
    void saveWhile(const std::function<bool()>& isThere, const QString& name,
                   const QString& release, const std::function<void()>& command);
    void waitForMessageToGo();
    void showSearch();
    void showMenus();
    void showSmallPages();
    void showDialogs();
    void showBoxes();

    Board::MainWindow* const window;
    const QDir releases;
    const WaitFor waitFor;
    const Save save;
};

} // namespace Kestoboard

#endif
