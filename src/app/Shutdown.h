#ifndef APP_SHUTDOWN_H
#define APP_SHUTDOWN_H

#include <QObject>
#include <QPointer>

#include <functional>

class QMessageBox;
class QWidget;

namespace Board
{
class KSBaseHandler;
class MainWindow;
} // namespace Board

namespace Kestoboard
{

/// The one way out of the program.
///
/// Leaving Qt's main loop ends every nested loop at once, and with it every wait for the board
/// tool: the operation above would take the missing answer for a failure. So the main loop is left
/// only when nobody waits. Otherwise the settings are saved and the process ends where it stands;
/// the board tool sees the end of its input and ends after the command at hand.
///
/// GUI thread.
class Shutdown : public QObject
{
    Q_OBJECT

public:
    explicit Shutdown(QObject* parent = nullptr);
    ~Shutdown() override;

    /// Closing the window is leaving from now on. The window outlives its watch.
    void watch(Board::MainWindow* window);

    /// Leaves, but asks first while a bitstream is on its way to a board.
    void requestWithQuestion();
    /// Leaves without a question. Returns only when nobody waits for the board tool: the main loop
    /// ends next.
    void request();
    /// Ends the process at once, with the settings saved and status 0.
    [[noreturn]] void endNow();

    /// What the manager of the desktop's session lets a program do when the session is to end.
    struct SessionEnd {
        /// Whether the person may be asked. May serve events.
        std::function<bool()> mayAsk;
        /// Keeps the session from ending.
        std::function<void()> cancel;
    };
    /// Makes ready for the end of the session: the settings are saved, and while a bitstream is on
    /// its way to a board the person is asked as in closing. Who leaves, leaves at once; who stays
    /// keeps the session from ending. The program itself ends when it is told to.
    ///
    /// Returns when the question has been answered: the session waits for that.
    void prepareSessionEnd(const SessionEnd& session);

    /// The question whether to leave during a transfer, not shown yet. The parent owns it, or else
    /// the caller.
    static QMessageBox* makeQuestion(QWidget* parent);

    /// Has everybody save what the next run should find.
    void save();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Time to save settings; the window still exists.
    void saving();
    /// The process is about to end where it stands: what lies around in files is to be removed.
    void ending();

private:
    void ask(Board::MainWindow* window);

    QPointer<QMessageBox> question;
};

/// Ends the process without touching anything that another thread may be using.
[[noreturn]] void endProcess(int status);

} // namespace Kestoboard

#endif
