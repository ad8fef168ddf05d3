#include <application/ConsoleView.h>

#include <application/ConsoleGutter.h>
#include <application/ConsoleViewFace.h>
#include <application/FixedFont.h>

#include <foundation/Theme.h>

#include <QAbstractTextDocumentLayout>
#include <QLocale>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextCursor>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace Zandu
{

namespace
{

/// So long the window may be kept from its other tasks.
constexpr std::chrono::milliseconds sliceTime(8);
/// Lines that are shown in the turn in which they came.
constexpr int linesAtOnce = 20;
/// Messages that wait for the view to be seen; with more of them they go into the text in batches.
constexpr std::size_t mostUnseen = 1000;
/// Old lines go in steps of so many at most, of which none is felt.
constexpr int largestStep = 2000;
/// A view full of matches is marked up to here.
constexpr int mostMarks = 2000;
constexpr int tabColumns = 8;
/// The view is never made lower than these need.
constexpr int leastLines = 2;
constexpr qreal leastFontSize = 5;
constexpr qreal mostFontSize = 48;
constexpr int wheelStep = 120;
constexpr int jumpMargin = 8;
/// So often in a row the place of the end is looked at again: each time finds it lower, or is the
/// last.
constexpr int mostSettlings = 20;

class BlockData : public QTextBlockUserData
{
public:
    explicit BlockData(const ConsoleLine& shown)
        : line{shown.kind, shown.level, shown.time, QString()}
    {
    }

    const ConsoleLine line;
};

/// Null for a plain line, which has the colour of the palette.
const char* getColorName(const ConsoleLine& line)
{
    if (line.kind == ConsoleLine::Kind::Cut || line.kind == ConsoleLine::Kind::Dropped) {
        return "text_light";
    }
    switch (line.level) {
    case Orvex::Level::Error:
        return "error";
    case Orvex::Level::Warning:
        return "warning";
    case Orvex::Level::Normal:
        break;
    }
    return nullptr;
}

QTextEdit::ExtraSelection getSelection(const QTextBlock& block, int column, int length)
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(block);
    selection.cursor.setPosition(block.position() + column);
    selection.cursor.setPosition(block.position() + column + length, QTextCursor::KeepAnchor);
    return selection;
}

QString getMark(const ConsoleLine& line)
{
    switch (line.kind == ConsoleLine::Kind::First ? line.level : Orvex::Level::Normal) {
    case Orvex::Level::Error:
        return QStringLiteral("✖ ");
    case Orvex::Level::Warning:
        return QStringLiteral("⚠ ");
    case Orvex::Level::Normal:
        break;
    }
    return QStringLiteral("  ");
}

QString getPrefix(const ConsoleLine& line)
{
    return line.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz ")) + getMark(line);
}

} // namespace

ConsoleView::ConsoleView(QWidget* parent)
    : QPlainTextEdit(parent)
    , gutter(new ConsoleGutter(this))
    , jumpButton(new QToolButton(this))
{
    ConsoleViewFace::install();
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setAccessibleName(tr("Messages"));
    // A line in a script that runs from right to left still begins at the margin of the others.
    QTextOption option = document()->defaultTextOption();
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDefaultTextOption(option);

    jumpButton->setObjectName(QStringLiteral("consoleJumpButton"));
    jumpButton->setText(tr("Jump to end"));
    jumpButton->setIconSize(QSize(20, 16));
    jumpButton->setIcon(Orvex::theme->getIcon("end"));
    jumpButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    jumpButton->setCursor(Qt::ArrowCursor);
    jumpButton->hide();
    connect(jumpButton, &QToolButton::clicked, this, [this] {
        jumpToEnd();
        setFocus();
    });

    turnTimer.setSingleShot(true);
    turnTimer.setInterval(0);
    connect(&turnTimer, &QTimer::timeout, this, &ConsoleView::endTurn);
    settleTimer.setSingleShot(true);
    settleTimer.setInterval(0);
    connect(&settleTimer, &QTimer::timeout, this, &ConsoleView::settleAtEnd);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ConsoleView::followScrolling);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ConsoleView::followGrowth);
    // To bring the cursor into sight scrolls without a word from the scroll bar.
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &ConsoleView::followScrolling);
    connect(this, &QPlainTextEdit::updateRequest, gutter, [this] { gutter->update(); });
    setLinesWrapped(true);
    setFont(getFixedFont());
}

ConsoleView::~ConsoleView() = default;

void ConsoleView::add(const Orvex::Message& message)
{
    waiting.push_back(message);
    if (!isVisible() && waiting.size() < mostUnseen) {
        return;
    }
    if (linesThisTurn < linesAtOnce) {
        showSlice(linesAtOnce - linesThisTurn);
    }
    if (!turnTimer.isActive()) {
        sayingTime.start();
        turnTimer.start();
    }
}

/// What the turn has left is shown in the next ones. When the saying alone took the time of a
/// slice, the window has its other tasks first.
void ConsoleView::endTurn()
{
    linesThisTurn = 0;
    const bool isTimeOver = sayingTime.isValid() && sayingTime.hasExpired(sliceTime.count());
    sayingTime.invalidate();
    if (!hasWaiting()) {
        return;
    }
    if (!isTimeOver) {
        showSlice(std::numeric_limits<int>::max());
    }
    turnTimer.start();
}

void ConsoleView::showAll()
{
    while (hasWaiting()) {
        showSlice(std::numeric_limits<int>::max());
    }
}

void ConsoleView::clearLines()
{
    waiting.clear();
    current.reset();
    droppedLines = 0;
    clear();
    jumpToEnd();
    emit linesRearranged();
}

int ConsoleView::getLineLimit() const
{
    return lineLimit;
}

void ConsoleView::setLineLimit(int limit)
{
    lineLimit = std::max(limit, 1);
    dropOldLines(0);
    emit optionsChanged();
}

Orvex::Level ConsoleView::getLowestLevel() const
{
    return lowestLevel;
}

void ConsoleView::setLowestLevel(Orvex::Level level)
{
    if (level == lowestLevel) {
        return;
    }
    lowestLevel = level;
    const bool stayAtEnd = following;
    const QTextCursor top(firstVisibleBlock());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        hideOrShow(block);
    }
    document()->markContentsDirty(0, document()->characterCount());
    if (stayAtEnd) {
        jumpToEnd();
    } else {
        verticalScrollBar()->setValue(top.block().firstLineNumber());
    }
    emit optionsChanged();
    emit linesRearranged();
}

bool ConsoleView::areTimesShown() const
{
    return gutter->areTimesShown();
}

void ConsoleView::setTimesShown(bool shown)
{
    gutter->setTimesShown(shown);
    placeExtras();
    emit optionsChanged();
}

bool ConsoleView::areTimesCopied() const
{
    return timesCopied;
}

void ConsoleView::setTimesCopied(bool copied)
{
    timesCopied = copied;
    emit optionsChanged();
}

bool ConsoleView::areLinesWrapped() const
{
    return lineWrapMode() == QPlainTextEdit::WidgetWidth;
}

void ConsoleView::setLinesWrapped(bool wrapped)
{
    setLineWrapMode(wrapped ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    emit optionsChanged();
}

qreal ConsoleView::getFontSize() const
{
    return font().pointSizeF();
}

void ConsoleView::setFontSize(qreal size)
{
    QFont sized = font();
    sized.setPointSizeF(std::clamp(size, leastFontSize, mostFontSize));
    setFont(sized);
    emit optionsChanged();
}

void ConsoleView::resetFontSize()
{
    setFontSize(getFixedFont().pointSizeF());
}

void ConsoleView::setMarkedText(const QString& text, Qt::CaseSensitivity sensitivity)
{
    markedText = text;
    markedCase = sensitivity;
    paintSeen();
}

bool ConsoleView::isEmpty() const
{
    return document()->begin().userData() == nullptr;
}

QString ConsoleView::getText() const
{
    return getText(0, document()->characterCount(), true);
}

QString ConsoleView::getSelectedText() const
{
    const QTextCursor cursor = textCursor();
    return getText(cursor.selectionStart(), cursor.selectionEnd(), false);
}

QSize ConsoleView::minimumSizeHint() const
{
    return {QPlainTextEdit::minimumSizeHint().width(),
            leastLines * fontMetrics().lineSpacing() + 2 * frameWidth()};
}

bool ConsoleView::isFollowing() const
{
    return following;
}

void ConsoleView::jumpToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

const ConsoleLine& ConsoleView::getLine(const QTextBlock& block)
{
    static const ConsoleLine none;
    const auto* data = static_cast<const BlockData*>(block.userData());
    return data != nullptr ? data->line : none;
}

QMimeData* ConsoleView::createMimeDataFromSelection() const
{
    auto* text = new QMimeData;
    text->setText(getSelectedText());
    return text;
}

void ConsoleView::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        paintSeen();
    } else if (event->type() == QEvent::FontChange) {
        setTabStopDistance(tabColumns * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
        placeExtras();
    }
}

void ConsoleView::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    placeExtras();
}

void ConsoleView::showEvent(QShowEvent* event)
{
    QPlainTextEdit::showEvent(event);
    showSlice(std::numeric_limits<int>::max());
    turnTimer.start();
}

void ConsoleView::wheelEvent(QWheelEvent* event)
{
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    setFontSize(getFontSize() + qreal(event->angleDelta().y()) / wheelStep);
    event->accept();
}

/// Shows what waits until the time of a slice is over.
void ConsoleView::showSlice(int mostLines)
{
    {
        const QScopedValueRollback<bool> adding(growing, true);
        linesThisTurn += insertWaiting(mostLines);
        dropOldLines(std::min(lineLimit / 10, largestStep));
    }
    followGrowth();
    emit linesAdded();
}

/// Returns how many lines it has added.
int ConsoleView::insertWaiting(int mostLines)
{
    QElapsedTimer clock;
    clock.start();
    const bool selected = textCursor().hasSelection();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    // To move there would lay out the line that the cursor comes from. That is the first one, and
    // when it was the longest and is shorter now, the toolkit looks at all others.
    const int end = document()->characterCount() - 1;
    cursor.setPosition(end);
    int lines = 0;
    while (hasWaiting() && lines < mostLines &&
           !(lines > 0 && clock.hasExpired(sliceTime.count()))) {
        insertLine(cursor, takeLine());
        ++lines;
    }
    cursor.endEditBlock();
    if (selected) {
        keepSelection(end);
    }
    return lines;
}

/// A selection that reached to the end has grown with the text: it shrinks back to what the person
/// selected.
void ConsoleView::keepSelection(int oldEnd)
{
    QTextCursor selection = textCursor();
    const int anchor = std::min(selection.anchor(), oldEnd);
    const int position = std::min(selection.position(), oldEnd);
    if (anchor != selection.anchor() || position != selection.position()) {
        const int place = verticalScrollBar()->value();
        selection.setPosition(anchor);
        selection.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(selection);
        verticalScrollBar()->setValue(place);
    }
}

bool ConsoleView::hasWaiting() const
{
    return current.has_value() || !waiting.empty();
}

ConsoleLine ConsoleView::takeLine()
{
    if (!current) {
        current.emplace(waiting.front());
        waiting.pop_front();
    }
    ConsoleLine line = current->next();
    if (!current->hasNext()) {
        current.reset();
    }
    return line;
}

void ConsoleView::insertLine(QTextCursor& cursor, const ConsoleLine& line)
{
    // Said, the formats need not be looked up in the text before.
    static const QTextBlockFormat blockFormat;
    static const QTextCharFormat textFormat;
    if (!isEmpty()) {
        cursor.insertBlock(blockFormat, textFormat);
    }
    cursor.insertText(line.text, textFormat);
    cursor.block().setUserData(new BlockData(line));
    hideOrShow(cursor.block());
}

/// Brings the lines down to the limit when they exceed it by more than `tolerance`. The oldest go,
/// and one line in their place says how many there were.
void ConsoleView::dropOldLines(int tolerance)
{
    const int excess = blockCount() - lineLimit;
    if (excess <= tolerance) {
        return;
    }
    const bool stayAtEnd = following;
    const QTextCursor top(firstVisibleBlock());
    const bool again = getLine(document()->begin()).kind == ConsoleLine::Kind::Dropped;
    droppedLines += again ? excess : excess + 1;

    const ConsoleLine note{
        ConsoleLine::Kind::Dropped, Orvex::Level::Normal, QDateTime::currentDateTime(),
        tr("(%1 earlier lines were dropped.)").arg(QLocale().toString(droppedLines))};
    const QTextBlock last = document()->findBlockByNumber(excess);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.insertText(note.text);
    cursor.block().setUserData(new BlockData(note));
    hideOrShow(cursor.block());
    cursor.endEditBlock();

    if (stayAtEnd) {
        jumpToEnd();
    } else {
        verticalScrollBar()->setValue(top.block().firstLineNumber());
    }
    emit linesRearranged();
}

void ConsoleView::hideOrShow(const QTextBlock& block) const
{
    const ConsoleLine& line = getLine(block);
    QTextBlock(block).setVisible(line.kind == ConsoleLine::Kind::Dropped ||
                                 line.level >= lowestLevel);
}

/// Gives the lines that are seen their colours, and marks in them what is searched for. Colours are
/// no property of the text: so a text of any length takes those of another theme at once.
void ConsoleView::paintSeen()
{
    seenChanged = true;
    if (paintingSeen || !isVisible()) {
        return;
    }
    // To paint lays lines out, which can move others into sight and lead here again.
    const QScopedValueRollback<bool> painting(paintingSeen, true);
    while (std::exchange(seenChanged, false)) {
        setExtraSelections(getSeen());
    }
    gutter->update();
}

QList<QTextEdit::ExtraSelection> ConsoleView::getSeen() const
{
    QList<QTextEdit::ExtraSelection> seen;
    const QTextBlock end = cursorForPosition(viewport()->rect().bottomLeft()).block().next();
    for (QTextBlock block = firstVisibleBlock(); block.isValid() && block != end;
         block = block.next()) {
        const char* color = getColorName(getLine(block));
        if (color != nullptr) {
            seen.push_back(getSelection(block, 0, block.length() - 1));
            seen.back().format.setForeground(Orvex::theme->getColor(color));
        }
        addMarks(block, seen);
    }
    return seen;
}

void ConsoleView::addMarks(const QTextBlock& block, QList<QTextEdit::ExtraSelection>& seen) const
{
    if (markedText.isEmpty()) {
        return;
    }
    const QString text = block.text();
    for (int at = text.indexOf(markedText, 0, markedCase); at >= 0 && seen.size() < mostMarks;
         at = text.indexOf(markedText, at + markedText.size(), markedCase)) {
        seen.push_back(getSelection(block, at, markedText.size()));
        seen.back().format.setBackground(Orvex::theme->getColor("match"));
        seen.back().format.setForeground(Orvex::theme->getColor("text"));
    }
}

QString ConsoleView::getText(int begin, int end, bool withHidden) const
{
    QString text;
    bool started = false;
    for (QTextBlock block = document()->findBlock(begin);
         block.isValid() && block.position() <= end; block = block.next()) {
        const ConsoleLine& line = getLine(block);
        if (line.kind == ConsoleLine::Kind::Cut || !(withHidden || block.isVisible())) {
            continue;
        }
        const bool piece = line.kind == ConsoleLine::Kind::Piece;
        if (started && !piece) {
            text += QLatin1Char('\n');
        }
        started = true;
        const int from = std::max(begin - block.position(), 0);
        if (timesCopied && !piece && from == 0 && block.position() < end) {
            text += getPrefix(line);
        }
        text += block.text().midRef(from, end - block.position() - from);
    }
    return text;
}

/// The gutter beside the text and the button in its corner.
void ConsoleView::placeExtras()
{
    setViewportMargins(gutter->sizeHint().width(), 0, 0, 0);
    const QRect text = viewport()->geometry();
    const int width = gutter->sizeHint().width();
    gutter->setGeometry(text.left() - width, text.top(), width, text.height());
    jumpButton->adjustSize();
    jumpButton->move(text.right() - jumpButton->width() - jumpMargin,
                     text.bottom() - jumpButton->height() - jumpMargin);
    paintSeen();
}

void ConsoleView::followScrolling()
{
    if (growing || !isVisible()) {
        return;
    }
    following = verticalScrollBar()->value() >= verticalScrollBar()->maximum();
    jumpButton->setVisible(!following);
    paintSeen();
}

/// While the toolkit tells of a new end it does not count the lines that are laid out on the way
/// there. Told that the text has grown, it looks again.
void ConsoleView::settleAtEnd()
{
    ++settlings;
    QAbstractTextDocumentLayout* layout = document()->documentLayout();
    emit layout->documentSizeChanged(layout->documentSize());
    if (following && verticalScrollBar()->value() < verticalScrollBar()->maximum()) {
        followGrowth();
    }
    if (!settleTimer.isActive()) {
        settlings = 0;
    }
}

void ConsoleView::followGrowth()
{
    if (growing || !isVisible()) {
        return;
    }
    // To scroll there lays lines out, which may move the end.
    for (int end = -1; following && end < verticalScrollBar()->maximum();) {
        const QScopedValueRollback<bool> jumping(growing, true);
        end = verticalScrollBar()->maximum();
        verticalScrollBar()->setValue(end);
    }
    if (settlings < mostSettlings) {
        settleTimer.start();
    }
    followScrolling();
}

} // namespace Zandu
