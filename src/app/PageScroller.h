#ifndef APP_PAGESCROLLER_H
#define APP_PAGESCROLLER_H

#include <QObject>

class QScrollBar;
class QStackedWidget;

namespace Kestoboard
{

/// Lets a page that needs more room than it has be scrolled, as the table of a board with many
/// channels in a small window: so nothing is pressed together or cut off, and the line between the
/// pages and the console stays where the person has put it.
///
/// The pages remain children of their stack. The bars stand beside the page that is shown, and
/// shift it within the stack; the wheel, the keys of a bar and the focus that goes to a hidden
/// control do that.
class PageScroller : public QObject
{
    Q_OBJECT

public:
    /// For the pages that the stack has now. Belongs to it.
    explicit PageScroller(QStackedWidget* pages);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QScrollBar* createBar(Qt::Orientation orientation, const QString& name, const char* objectName);
    bool isOfTheShown(const QObject* watched) const;
    /// Shows the bars that the page of the moment needs.
    void fit();
    void place();
    /// Follows the focus.
    void bringIntoSight(const QWidget* former, const QWidget* control);
    void reveal(QScrollBar* bar, int begin, int end);
    bool scrollByWheel(QEvent* event);

    QStackedWidget* const stack;
    QScrollBar* const uprightBar;
    QScrollBar* const levelBar;
    /// The page is being placed by this.
    bool isPlacing = false;
};

} // namespace Kestoboard

#endif
