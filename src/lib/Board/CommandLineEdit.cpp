#include <Board/CommandLineEdit.h>

#include <QKeyEvent>

namespace Board
{

CommandLineEdit::CommandLineEdit(QWidget* parent)
    : QLineEdit(parent)
    , historyIndex(0)
{
}

CommandLineEdit::~CommandLineEdit() = default;

void CommandLineEdit::clear()
{
    const QString command = text();
    if (!command.isEmpty() && (history.isEmpty() || history.last() != command)) {
        history.append(command);
        historyIndex = history.size();
    }
    QLineEdit::clear();
}

void CommandLineEdit::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        showOlder();
        event->accept();
        break;
    case Qt::Key_Down:
        showNewer();
        event->accept();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void CommandLineEdit::showOlder()
{
    if (historyIndex == 0) {
        return;
    }
    if (historyIndex == history.size()) {
        history.append(text());
    }
    --historyIndex;
    setText(history.at(historyIndex));
}

void CommandLineEdit::showNewer()
{
    if (historyIndex >= history.size() || history.size() == 1) {
        return;
    }
    ++historyIndex;
    setText(history.at(historyIndex));
    if (historyIndex == history.size() - 1) {
        // That was the draft: the browse is over.
        history.removeLast();
    }
}

} // namespace Board
