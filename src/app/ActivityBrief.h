#ifndef APP_ACTIVITYBRIEF_H
#define APP_ACTIVITYBRIEF_H

#include <QWidget>

class QLabel;
class QStatusBar;

namespace Kestoboard
{

class ActivityIndicator;
class StateIcon;

/// Stands in for the indicator while a message of the engine takes its place in the status bar: the
/// message has the command, so this has the rest, the time or the verdict, in a word or two. It
/// stays in sight where the message is cut off in a narrow window.
class ActivityBrief : public QWidget
{
    Q_OBJECT

public:
    /// Belongs to the bar, of which the indicator is a part as well.
    ActivityBrief(const ActivityIndicator* indicator, QStatusBar* statusBar);

private:
    void refresh();

    const ActivityIndicator* const activity;
    const QStatusBar* const bar;
    StateIcon* icon;
    QLabel* label;
};

} // namespace Kestoboard

#endif
