#ifndef APPLICATION_NOTICEBAR_H
#define APPLICATION_NOTICEBAR_H

#include <QFrame>
#include <QTimer>

class QLabel;

namespace Zandu
{

/// A sentence for the person at the edge of a widget, in place of a box that interrupts.
///
/// It is shown as plain text and takes no room while there is nothing to say.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget* parent);

    /// Good news: goes by itself after a while.
    void inform(const QString& sentence);
    /// A failure: stays until it is closed or something else is said.
    void warn(const QString& sentence);

    /// What is said at present; empty when nothing is.
    QString getSentence() const;

private:
    void say(const char* iconName, const QString& sentence);

    QLabel* iconLabel;
    QLabel* textLabel;
    QTimer timer;
};

} // namespace Zandu

#endif
