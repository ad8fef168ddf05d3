#ifndef APP_TOURSTATES_H
#define APP_TOURSTATES_H

#include <QByteArray>
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

    TourStates(Board::MainWindow* panel, WaitFor waiter, Save saver);

    /// The bench on which the states come about, in the language of scenarios.
    static QByteArray getScenario();

    /// `bitstream` is chosen on the Bitstream page of the window.
    void visit(const QString& bitstream);

private:
    void showEmptyList();
    void showFailure(const QString& bitstream);
    void showWaiting(const QString& bitstream);
    void showSearch();
    void showMenus();
    void showSmallPages();
    void showDialogs();
    void showBoxes();

    Board::MainWindow* const window;
    const WaitFor waitFor;
    const Save save;
};

} // namespace Kestoboard

#endif
