#ifndef APP_LASTWORDSDIALOG_H
#define APP_LASTWORDSDIALOG_H

#include <QDialog>

#include <functional>

class QLabel;

namespace Kestoboard
{

/// Shows what a panel said last before it ended with its board tool.
class LastWordsDialog : public QDialog
{
    Q_OBJECT

public:
    /// `keeper` puts the transcript out of the way of the next panel, and says whether it could. It
    /// is asked before the panel is wanted back.
    LastWordsDialog(const QString& text, std::function<bool()> keeper);

signals:
    /// The person wants the panel back.
    void startAgainRequested();

private:
    void startAgain();

    const std::function<bool()> keep;
    QLabel* remark;
    bool isWarned = false;
};

} // namespace Kestoboard

#endif
