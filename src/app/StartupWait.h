#ifndef APP_STARTUPWAIT_H
#define APP_STARTUPWAIT_H

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QLabel;

namespace Kestoboard
{

/// The small window that says what the start waits for, when it takes long. It needs nobody's
/// attention while the start is quick, and goes with its object.
class StartupWait : public QDialog
{
    Q_OBJECT

public:
    /// Shows itself after a moment, as soon as events are served.
    StartupWait();
    ~StartupWait() override;

signals:
    /// The person does not want to wait any longer.
    void quitRequested();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void refresh();

    QElapsedTimer elapsed;
    QTimer timer;
    QLabel* detail;
};

} // namespace Kestoboard

#endif
