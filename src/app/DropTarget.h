#ifndef APP_DROPTARGET_H
#define APP_DROPTARGET_H

#include <QObject>
#include <QString>

class QMimeData;

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

/// Takes a bitstream file that is dropped on the window, also on one of its text fields, and shows
/// it chosen. What cannot be taken is refused with a sentence on the console. Text goes where it is
/// dropped.
class DropTarget : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window, whose fields are all there already.
    explicit DropTarget(Board::MainWindow* panel);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows a file chosen, or says on the console why it cannot be.
    void offer(const QString& path);

private:
    void take(const QMimeData& dropped);

    Board::MainWindow* const window;
};

} // namespace Kestoboard

#endif
