#ifndef APP_DESKTOPNOTICE_H
#define APP_DESKTOPNOTICE_H

class QString;
class QWidget;

namespace Kestoboard
{

/// Tells a person who is at another window that something they wait for is over: marks the window
/// in the task bar and, where the desktop can, shows a notification. Does nothing for the window
/// that they are at, be it at a dialog of it.
///
/// GUI thread; waits for nobody. A desktop that does not answer shows no notification.
void notify(QWidget* window, const QString& sentence);

/// The sentence as the desktop has to be given it, which may take it for markup.
QString getNoticeBody(const QString& sentence, bool isMarkup);

} // namespace Kestoboard

#endif
