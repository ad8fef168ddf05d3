#include <application/ConsoleViewFace.h>

#include <application/ConsoleView.h>

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>
#include <utility>

namespace Zandu
{

namespace
{

QAccessibleInterface* createFace(const QString& className, QObject* object)
{
    auto* const view = qobject_cast<ConsoleView*>(object);
    const bool isMeant = className == QLatin1String(ConsoleView::staticMetaObject.className());
    return isMeant && view != nullptr ? new ConsoleViewFace(view) : nullptr;
}

/// Empty for a plain line, and for a line that goes on with the message of the one before.
QString getLevelWord(const ConsoleLine& line)
{
    switch (line.kind == ConsoleLine::Kind::First ? line.level : Orvex::Level::Normal) {
    case Orvex::Level::Error:
        return ConsoleView::tr("Error: ");
    case Orvex::Level::Warning:
        return ConsoleView::tr("Warning: ");
    case Orvex::Level::Normal:
        break;
    }
    return {};
}

/// The first and the last place of the unit of the text that the cursor is in.
std::pair<int, int> getBounds(QTextCursor cursor, QAccessible::TextBoundaryType boundary)
{
    const auto getEnd = [&cursor](QTextCursor::MoveOperation move) {
        cursor.movePosition(move);
        return cursor.position();
    };
    const int place = cursor.position();
    const QTextBlock block = cursor.block();
    const int blockEnd = block.position() + block.length() - 1;
    switch (boundary) {
    case QAccessible::CharBoundary:
        return {place, std::min(place + 1, getEnd(QTextCursor::End))};
    case QAccessible::WordBoundary: {
        const int begin = getEnd(QTextCursor::StartOfWord);
        return {begin, getEnd(QTextCursor::EndOfWord)};
    }
    case QAccessible::LineBoundary: {
        const int begin = getEnd(QTextCursor::StartOfLine);
        return {begin, getEnd(QTextCursor::EndOfLine)};
    }
    case QAccessible::SentenceBoundary:
    case QAccessible::ParagraphBoundary:
        return {block.position(), blockEnd};
    case QAccessible::NoBoundary:
        break;
    }
    return {0, getEnd(QTextCursor::End)};
}

bool isReadAsLine(QAccessible::TextBoundaryType boundary)
{
    return boundary == QAccessible::LineBoundary || boundary == QAccessible::SentenceBoundary ||
           boundary == QAccessible::ParagraphBoundary;
}

} // namespace

void ConsoleViewFace::install()
{
    QAccessible::installFactory(createFace);
}

ConsoleViewFace::ConsoleViewFace(ConsoleView* shown)
    : QAccessibleWidget(shown, QAccessible::EditableText)
    , view(shown)
{
}

ConsoleViewFace::~ConsoleViewFace() = default;

void* ConsoleViewFace::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
}

QAccessible::State ConsoleViewFace::state() const
{
    QAccessible::State known = QAccessibleWidget::state();
    known.readOnly = true;
    known.multiLine = true;
    known.selectableText = true;
    return known;
}

QString ConsoleViewFace::text(QAccessible::Text which) const
{
    return which == QAccessible::Value ? text(0, characterCount()) : QAccessibleWidget::text(which);
}

void ConsoleViewFace::selection(int index, int* start, int* end) const
{
    const QTextCursor cursor = view->textCursor();
    const bool isThere = index == 0 && cursor.hasSelection();
    *start = isThere ? cursor.selectionStart() : 0;
    *end = isThere ? cursor.selectionEnd() : 0;
}

int ConsoleViewFace::selectionCount() const
{
    return view->textCursor().hasSelection() ? 1 : 0;
}

void ConsoleViewFace::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void ConsoleViewFace::removeSelection(int index)
{
    if (index == 0) {
        setCursorPosition(cursorPosition());
    }
}

void ConsoleViewFace::setSelection(int index, int start, int end)
{
    if (index == 0) {
        QTextCursor cursor = view->textCursor();
        cursor.setPosition(getPlace(start));
        cursor.setPosition(getPlace(end), QTextCursor::KeepAnchor);
        view->setTextCursor(cursor);
    }
}

int ConsoleViewFace::cursorPosition() const
{
    return view->textCursor().position();
}

void ConsoleViewFace::setCursorPosition(int position)
{
    setSelection(0, position, position);
}

QString ConsoleViewFace::text(int start, int end) const
{
    QTextCursor cursor(view->document());
    cursor.setPosition(getPlace(start));
    cursor.setPosition(getPlace(end), QTextCursor::KeepAnchor);
    return cursor.selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

QString ConsoleViewFace::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                          int* start, int* end) const
{
    QTextCursor cursor(view->document());
    cursor.setPosition(getPlace(offset));
    const int begin = getBounds(cursor, boundary).first;
    if (begin == 0) {
        *start = *end = 0;
        return {};
    }
    cursor.setPosition(begin - 1);
    const auto [from, to] = getBounds(cursor, boundary);
    return tell(from, to, boundary, start, end);
}

QString ConsoleViewFace::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                         int* start, int* end) const
{
    QTextCursor cursor(view->document());
    cursor.setPosition(getPlace(offset));
    const int next = std::max(getBounds(cursor, boundary).second, cursor.position()) +
                     (boundary == QAccessible::CharBoundary ? 0 : 1);
    if (next > characterCount()) {
        *start = *end = characterCount();
        return {};
    }
    cursor.setPosition(next);
    const auto [from, to] = getBounds(cursor, boundary);
    return tell(from, to, boundary, start, end);
}

QString ConsoleViewFace::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                      int* start, int* end) const
{
    QTextCursor cursor(view->document());
    cursor.setPosition(getPlace(offset));
    const auto [from, to] = getBounds(cursor, boundary);
    return tell(from, to, boundary, start, end);
}

int ConsoleViewFace::characterCount() const
{
    return view->document()->characterCount() - 1;
}

QRect ConsoleViewFace::characterRect(int offset) const
{
    QTextCursor cursor(view->document());
    cursor.setPosition(getPlace(offset));
    const QRect begin = view->cursorRect(cursor);
    cursor.movePosition(QTextCursor::NextCharacter);
    const QRect next = view->cursorRect(cursor);
    const int width = next.top() == begin.top() ? qMax(next.left() - begin.left(), 0) : 0;
    const QRect place(begin.topLeft(), QSize(width, begin.height()));
    return place.translated(view->viewport()->mapToGlobal(QPoint()));
}

int ConsoleViewFace::offsetAtPoint(const QPoint& point) const
{
    return view->cursorForPosition(view->viewport()->mapFromGlobal(point)).position();
}

void ConsoleViewFace::scrollToSubstring(int start, int /*end*/)
{
    view->verticalScrollBar()->setValue(
        view->document()->findBlock(getPlace(start)).firstLineNumber());
}

QString ConsoleViewFace::attributes(int offset, int* start, int* end) const
{
    // The text has none: colours and marks are drawn over it.
    const QTextBlock block = view->document()->findBlock(getPlace(offset));
    *start = block.position();
    *end = block.position() + block.length() - 1;
    return {};
}

/// The place in the text for an offset of somebody who may know an older text; one below nothing is
/// that of the cursor.
int ConsoleViewFace::getPlace(int offset) const
{
    return offset < 0 ? cursorPosition() : std::min(offset, characterCount());
}

QString ConsoleViewFace::tell(int from, int to, QAccessible::TextBoundaryType boundary, int* start,
                              int* end) const
{
    *start = from;
    *end = to;
    const QTextBlock block = view->document()->findBlock(from);
    const bool isLed = isReadAsLine(boundary) && from == block.position();
    return (isLed ? getLevelWord(ConsoleView::getLine(block)) : QString()) + text(from, to);
}

} // namespace Zandu
