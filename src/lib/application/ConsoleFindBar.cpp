#include <application/ConsoleFindBar.h>

#include <application/ConsoleView.h>
#include <application/IconButton.h>
#include <application/PlaceholderColor.h>

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

#include <algorithm>
#include <chrono>

namespace Zandu
{

namespace
{

constexpr std::chrono::milliseconds sliceTime(8);

} // namespace

ConsoleFindBar::ConsoleFindBar(ConsoleView* searchedView, QWidget* parent)
    : QWidget(parent)
    , view(searchedView)
    , field(new QLineEdit(this))
    , caseButton(new QToolButton(this))
    , countLabel(new QLabel(this))
{
    field->setPlaceholderText(tr("Find in the console"));
    new PlaceholderColor(field);
    field->setAccessibleName(tr("Text to find"));
    field->setClearButtonEnabled(true);
    caseButton->setText(QStringLiteral("Aa"));
    caseButton->setCheckable(true);
    caseButton->setAutoRaise(true);
    caseButton->setToolTip(tr("Match upper and lower case"));
    caseButton->setAccessibleName(caseButton->toolTip());
    QToolButton* previous = createIconButton("previous", tr("Previous match (Shift+F3)"), this);
    QToolButton* next = createIconButton("next", tr("Next match (F3)"), this);
    QToolButton* closer = createIconButton("close", tr("Close the find bar (Esc)"), this);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(field, 1);
    layout->addWidget(countLabel);
    for (QToolButton* button : {caseButton, previous, next, closer}) {
        layout->addWidget(button);
    }
    hide();

    countTimer.setSingleShot(true);
    countTimer.setInterval(0);
    connect(&countTimer, &QTimer::timeout, this, &ConsoleFindBar::countSlice);
    connect(field, &QLineEdit::textChanged, this, [this] {
        restartCount();
        findNearest();
    });
    connect(caseButton, &QToolButton::toggled, this, &ConsoleFindBar::restartCount);
    connect(previous, &QToolButton::clicked, this, &ConsoleFindBar::findPrevious);
    connect(next, &QToolButton::clicked, this, &ConsoleFindBar::findNext);
    connect(closer, &QToolButton::clicked, this, &ConsoleFindBar::close);
    connect(view, &ConsoleView::cursorPositionChanged, this, &ConsoleFindBar::showCount);
    connect(view, &ConsoleView::linesRearranged, this, &ConsoleFindBar::restartCount);
    connect(view, &ConsoleView::linesAdded, this, [this] {
        if (isVisible() && !countTimer.isActive()) {
            countTimer.start();
        }
    });
}

void ConsoleFindBar::open()
{
    const QString selected = view->textCursor().selectedText();
    show();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) {
        field->setText(selected);
    }
    field->setFocus();
    field->selectAll();
    restartCount();
}

void ConsoleFindBar::close()
{
    hide();
    countTimer.stop();
    view->setMarkedText(QString(), getCase());
    view->setFocus();
}

void ConsoleFindBar::findNext()
{
    if (isKnownAbsent()) {
        return;
    }
    const int position = view->textCursor().selectionEnd();
    const QTextBlock block = view->document()->findBlock(position);
    if (!selectFrom(block, position - block.position())) {
        selectFrom(view->document()->begin(), 0);
    }
}

void ConsoleFindBar::findPrevious()
{
    if (isKnownAbsent()) {
        return;
    }
    const int position = view->textCursor().selectionStart();
    const QTextBlock block = view->document()->findBlock(position);
    if (!selectBefore(block, position - block.position())) {
        const QTextBlock last = view->document()->lastBlock();
        selectBefore(last, last.length());
    }
}

/// Selects the match at the cursor or after it, else the last one above: the cursor stands at the
/// end of a console that nobody has touched.
void ConsoleFindBar::findNearest()
{
    if (field->text().isEmpty()) {
        return;
    }
    const int position = view->textCursor().selectionStart();
    const QTextBlock block = view->document()->findBlock(position);
    if (!selectFrom(block, position - block.position())) {
        selectBefore(block, block.length());
    }
}

void ConsoleFindBar::keyPressEvent(QKeyEvent* event)
{
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        shift ? findPrevious() : findNext();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ConsoleFindBar::restartCount()
{
    matchesAbove.clear();
    matches = 0;
    if (isVisible()) {
        countTimer.start();
        showCount();
        view->setMarkedText(field->text(), getCase());
    }
}

void ConsoleFindBar::countSlice()
{
    QElapsedTimer clock;
    clock.start();
    QTextBlock block = view->document()->findBlockByNumber(matchesAbove.size());
    const int length = field->text().size();
    while (!view->isEmpty() && block.isValid() && length > 0 &&
           !clock.hasExpired(sliceTime.count())) {
        matchesAbove.push_back(matches);
        for (int at = findIn(block, 0); at >= 0; at = findIn(block, at + length)) {
            ++matches;
        }
        block = block.next();
    }
    if (!view->isEmpty() && block.isValid() && length > 0) {
        countTimer.start();
    }
    showCount();
}

void ConsoleFindBar::showCount()
{
    const QString count = getCount();
    const bool isGoingOn = countTimer.isActive() && !count.isEmpty();
    countLabel->setText(isGoingOn ? count + QStringLiteral("…") : count);
}

QString ConsoleFindBar::getCount() const
{
    if (field->text().isEmpty()) {
        return {};
    }
    if (matches == 0) {
        return countTimer.isActive() ? tr("Searching") : tr("No match");
    }
    const QString all = QLocale().toString(matches);
    const qint64 place = getPlaceOfSelection();
    if (place > 0) {
        return tr("%1 of %2", "a match among all").arg(QLocale().toString(place), all);
    }
    return matches == 1 ? tr("1 match") : tr("%1 matches").arg(all);
}

/// Which match is selected, counted from 1; 0 when none is or it has not been counted yet.
qint64 ConsoleFindBar::getPlaceOfSelection() const
{
    const QTextCursor cursor = view->textCursor();
    const QTextBlock block = view->document()->findBlock(cursor.selectionStart());
    if (block.blockNumber() >= matchesAbove.size() ||
        cursor.selectedText().compare(field->text(), getCase()) != 0) {
        return 0;
    }
    const int column = cursor.selectionStart() - block.position();
    qint64 place = matchesAbove.at(block.blockNumber());
    const int length = field->text().size();
    int at = findIn(block, 0);
    for (; at >= 0 && at < column; at = findIn(block, at + length)) {
        ++place;
    }
    return at == column ? place + 1 : 0;
}

void ConsoleFindBar::select(const QTextBlock& block, int column)
{
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + column);
    cursor.setPosition(block.position() + column + field->text().size(), QTextCursor::KeepAnchor);
    view->setTextCursor(cursor);
}

bool ConsoleFindBar::selectFrom(QTextBlock block, int column)
{
    for (; block.isValid(); block = block.next(), column = 0) {
        const int at = findIn(block, column);
        if (at >= 0) {
            select(block, at);
            return true;
        }
    }
    return false;
}

bool ConsoleFindBar::selectBefore(QTextBlock block, int column)
{
    while (block.isValid()) {
        const int at = findLastIn(block, column);
        if (at >= 0) {
            select(block, at);
            return true;
        }
        block = block.previous();
        column = block.length();
    }
    return false;
}

/// The first match of a line that is shown from the column on; -1 when there is none.
int ConsoleFindBar::findIn(const QTextBlock& block, int column) const
{
    const QString wanted = field->text();
    return wanted.isEmpty() || !block.isVisible() ? -1
                                                  : block.text().indexOf(wanted, column, getCase());
}

/// The last match that ends before the column; -1 when there is none.
int ConsoleFindBar::findLastIn(const QTextBlock& block, int column) const
{
    const QString wanted = field->text();
    // The length of a block counts the line's end, from where the toolkit finds nothing.
    const int from = std::min(column, block.length() - 1) - wanted.size();
    return wanted.isEmpty() || !block.isVisible() || from < 0
               ? -1
               : block.text().lastIndexOf(wanted, from, getCase());
}

bool ConsoleFindBar::isKnownAbsent() const
{
    return isVisible() && !countTimer.isActive() && matches == 0;
}

Qt::CaseSensitivity ConsoleFindBar::getCase() const
{
    return caseButton->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

} // namespace Zandu
