#include "app/PageScroller.h"

#include <QApplication>
#include <QGridLayout>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QWheelEvent>

#include <cstdlib>

namespace Kestoboard
{

namespace
{

/// The last control below the widget in the order of the tabulator. Others may stand between them.
QWidget* getLastControl(QWidget* widget)
{
    QWidget* last = widget;
    for (QWidget* next = widget->nextInFocusChain(); next != widget;
         next = next->nextInFocusChain()) {
        if (widget->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) != 0) {
            last = next;
        }
    }
    return last;
}

/// The height of the cell that the stack lies in. The stack itself is higher where it was promised
/// more.
int getCellHeight(QStackedWidget* stack)
{
    const auto* const grid = qobject_cast<const QGridLayout*>(stack->parentWidget()->layout());
    if (grid == nullptr) {
        return stack->height();
    }
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(stack), &row, &column, &rows, &columns);
    return grid->cellRect(row, column).height();
}

/// The height that the stack has in the smallest window when all below the pages gives way as far
/// as it can.
int getLeastRoom(QStackedWidget* stack)
{
    const QWidget* const pane = stack->parentWidget();
    const auto* const splitter = qobject_cast<const QSplitter*>(pane->parentWidget());
    if (splitter == nullptr) {
        return 1;
    }
    int room = splitter->height() + stack->window()->minimumHeight() - stack->window()->height();
    for (int index = 0; index < splitter->count(); ++index) {
        const QWidget* const other = splitter->widget(index);
        room -= other == pane ? pane->height() - getCellHeight(stack)
                              : other->minimumSizeHint().height() + splitter->handleWidth();
    }
    return room;
}

/// The height that every page fits into which can be had in a window of any size.
int getAskedHeight(QStackedWidget* stack)
{
    const int room = getLeastRoom(stack);
    int asked = 1;
    for (int index = 0; index < stack->count(); ++index) {
        const int need = stack->widget(index)->minimumSizeHint().height();
        asked = need <= room ? qMax(asked, need) : asked;
    }
    return asked;
}

void setRange(QScrollBar* bar, int need, int room)
{
    bar->setPageStep(room);
    bar->setSingleStep(bar->fontMetrics().lineSpacing());
    bar->setRange(0, qMax(0, need - room));
}

} // namespace

PageScroller::PageScroller(QStackedWidget* pages)
    : QObject(pages)
    , stack(pages)
    , uprightBar(createBar(Qt::Vertical, tr("Scroll the page"), "pageScrollBar"))
    , levelBar(createBar(Qt::Horizontal, tr("Scroll the page sideways"), "pageLevelScrollBar"))
{
    QWidget::setTabOrder(getLastControl(stack), uprightBar);
    QWidget::setTabOrder(uprightBar, levelBar);
    stack->installEventFilter(this);
    for (int index = 0; index < stack->count(); ++index) {
        stack->widget(index)->installEventFilter(this);
    }
    connect(stack, &QStackedWidget::currentChanged, this, [this] {
        uprightBar->setValue(0);
        levelBar->setValue(0);
        fit();
    });
    connect(qApp, &QApplication::focusChanged, this, &PageScroller::bringIntoSight);
}

/// Beside the stack: below it, those who ask for what is on the screen find its pages alone.
QScrollBar* PageScroller::createBar(Qt::Orientation orientation, const QString& name,
                                    const char* objectName)
{
    auto* const bar = new QScrollBar(orientation, stack->parentWidget());
    bar->setObjectName(QString::fromLatin1(objectName));
    bar->setAccessibleName(name);
    // A page of texts alone has nothing else that takes keys.
    bar->setFocusPolicy(Qt::TabFocus);
    bar->hide();
    connect(bar, &QScrollBar::valueChanged, this, &PageScroller::place);
    return bar;
}

bool PageScroller::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Wheel:
        if (watched == stack) {
            return scrollByWheel(event);
        }
        break;
    case QEvent::Move:
        if (watched != stack && isOfTheShown(watched)) {
            place();
            break;
        }
        Q_FALLTHROUGH();
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
        if (isOfTheShown(watched)) {
            fit();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// Whether it is the stack or its page, and nothing that this does itself.
bool PageScroller::isOfTheShown(const QObject* watched) const
{
    return !isPlacing && (watched == stack || watched == stack->currentWidget());
}

void PageScroller::fit()
{
    QWidget* const page = stack->currentWidget();
    // To resize what is about to be shown would leave its controls where they are.
    if (page == nullptr || !page->isVisible()) {
        return;
    }
    const QSize need = page->minimumSizeHint();
    const QSize room = stack->size();
    stack->setMinimumSize(1, getAskedHeight(stack));
    const int thickness = uprightBar->sizeHint().width();
    // Each bar takes room from the other direction.
    bool isTall = need.height() > room.height();
    const bool isWide = need.width() > room.width() - (isTall ? thickness : 0);
    isTall = need.height() > room.height() - (isWide ? thickness : 0);

    const QSize rest = room - QSize(isTall ? thickness : 0, isWide ? thickness : 0);
    stack->setContentsMargins(0, 0, room.width() - rest.width(), room.height() - rest.height());
    uprightBar->setGeometry(
        {stack->pos() + QPoint(rest.width(), 0), QSize(thickness, room.height())});
    levelBar->setGeometry(
        {stack->pos() + QPoint(0, rest.height()), QSize(rest.width(), thickness)});
    setRange(uprightBar, need.height(), rest.height());
    setRange(levelBar, need.width(), rest.width());
    uprightBar->setVisible(isTall);
    levelBar->setVisible(isWide);
    {
        const QScopedValueRollback<bool> placing(isPlacing, true);
        page->resize(rest.expandedTo(need));
    }
    place();
}

void PageScroller::place()
{
    QWidget* const page = stack->currentWidget();
    if (page == nullptr) {
        return;
    }
    const QScopedValueRollback<bool> placing(isPlacing, true);
    const QPoint shift(levelBar->value(), uprightBar->value());
    page->move(-shift);
    if (uprightBar->isHidden() && levelBar->isHidden()) {
        page->clearMask();
        return;
    }
    // Nothing of the page shows through the bars.
    page->setMask({QRect(shift, stack->contentsRect().size())});
    uprightBar->raise();
    levelBar->raise();
}

void PageScroller::bringIntoSight(const QWidget* former, const QWidget* control)
{
    if (control == nullptr || !stack->isAncestorOf(control)) {
        return;
    }
    // What is pressed with the mouse stays under it until it is let go, and who comes back to the
    // window finds the page as they have left it.
    const bool isPressed = QApplication::mouseButtons() != Qt::NoButton;
    const bool isBack = former == nullptr || former->window() != control->window();
    if (isPressed || isBack) {
        return;
    }
    const QWidget* const page = stack->currentWidget();
    if (page == nullptr || !page->isAncestorOf(control)) {
        return;
    }
    const QRect place(control->mapTo(page, QPoint()), control->size());
    reveal(uprightBar, place.top(), place.bottom());
    reveal(levelBar, place.left(), place.right());
}

/// The end is brought into sight, and then the beginning, which so is seen where not both can be.
void PageScroller::reveal(QScrollBar* bar, int begin, int end)
{
    const int margin = bar->singleStep();
    bar->setValue(qMax(bar->value(), end + margin - bar->pageStep()));
    bar->setValue(qMin(bar->value(), begin - margin));
}

bool PageScroller::scrollByWheel(QEvent* event)
{
    const QPoint turn = static_cast<QWheelEvent*>(event)->angleDelta();
    QScrollBar* const bar = std::abs(turn.x()) > std::abs(turn.y()) ? levelBar : uprightBar;
    return !bar->isHidden() && QCoreApplication::sendEvent(bar, event) && event->isAccepted();
}

} // namespace Kestoboard
