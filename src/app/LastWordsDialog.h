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
    /// `keptName` is the file that the transcript is to be kept as, empty where there is none.
    /// `keeper` puts it out of the way of the next panel by that name, and says whether it could.
    /// It is asked before the panel is wanted back.
    LastWordsDialog(const QString& text, const QString& keptName, std::function<bool()> keeper);

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
