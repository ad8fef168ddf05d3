#ifndef APP_LASTWORDSDIALOG_H
#define APP_LASTWORDSDIALOG_H

#include <QDialog>

namespace Kestoboard
{

/// Shows what a panel said last before it ended with its board tool.
class LastWordsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LastWordsDialog(const QString& text);

signals:
    /// The person wants the panel back.
    void startAgainRequested();
};

} // namespace Kestoboard

#endif
