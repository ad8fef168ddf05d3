#ifndef BOARD_COMMANDLINEEDIT_H
#define BOARD_COMMANDLINEEDIT_H

#include <Board/Export.h>

#include <QLineEdit>
#include <QList>
#include <QString>

namespace Board
{

/// A command field with a history of its own: Up and Down walk it, as in a terminal.
///
/// At rest the browse position stands just past the last entry. While the person browses, the last
/// entry is the draft: the text that stood in the field when browsing began. The history lives as
/// long as the field and has no limit.
class BOARD_EXPORT CommandLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit CommandLineEdit(QWidget* parent);
    ~CommandLineEdit() override;

public slots:
    /// Records the text in the history, unless it is empty or equals the last entry, and empties
    /// the field. The draft of a browse that is under way stays in the history.
    void clear();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showOlder();
    void showNewer();

    QList<QString> history;
    int historyIndex;
};

} // namespace Board

#endif
