#include <application/ConsoleGutter.h>

#include <application/ConsoleView.h>

#include <foundation/Theme.h>

#include <QHelpEvent>
#include <QLocale>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>

namespace Zandu
{

namespace
{

constexpr int gap = 5;
const char* const timePattern = "hh:mm:ss";

QString getTimeText(const ConsoleLine& line)
{
    return line.time.toString(QString::fromLatin1(timePattern));
}

std::string getIconName(const ConsoleLine& line)
{
    if (line.kind != ConsoleLine::Kind::First) {
        return std::string();
    }
    switch (line.level) {
    case Orvex::Level::Error:
        return "error";
    case Orvex::Level::Warning:
        return "warning";
    case Orvex::Level::Normal:
        break;
    }
    return std::string();
}

} // namespace

ConsoleGutter::ConsoleGutter(ConsoleView* parent)
    : QWidget(parent)
    , view(parent)
{
}

bool ConsoleGutter::areTimesShown() const
{
    return timesShown;
}

void ConsoleGutter::setTimesShown(bool shown)
{
    timesShown = shown;
}

QSize ConsoleGutter::sizeHint() const
{
    const int times = timesShown ? getTimeWidth() + gap : 0;
    return QSize(gap + times + getMarkSize() + gap, 0);
}

bool ConsoleGutter::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const auto* help = static_cast<QHelpEvent*>(event);
    const QTextCursor cursor = view->cursorForPosition(QPoint(0, help->pos().y()));
    const QDateTime time = ConsoleView::getLine(cursor.block()).time;
    QToolTip::showText(help->globalPos(), QLocale().toString(time, QLocale::LongFormat), this);
    return true;
}

void ConsoleGutter::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), Orvex::theme->getColor("base"));
    painter.setFont(view->font());
    painter.setPen(Orvex::theme->getColor("text_light"));
    QTextBlock block = view->firstVisibleBlock();
    while (block.isValid()) {
        const QRectF place = view->blockBoundingGeometry(block).translated(view->contentOffset());
        if (place.top() > event->rect().bottom()) {
            break;
        }
        if (block.isVisible()) {
            paintLine(painter, ConsoleView::getLine(block), qRound(place.top()));
        }
        block = block.next();
    }
}

void ConsoleGutter::paintLine(QPainter& painter, const ConsoleLine& line, int top) const
{
    const int height = view->fontMetrics().lineSpacing();
    const int markSize = getMarkSize();
    if (timesShown && line.kind == ConsoleLine::Kind::First) {
        painter.drawText(QRect(gap, top, getTimeWidth(), height), Qt::AlignLeft | Qt::AlignVCenter,
                         getTimeText(line));
    }
    const QRect mark(width() - gap - markSize, top + (height - markSize) / 2, markSize, markSize);
    if (line.kind == ConsoleLine::Kind::Piece) {
        painter.drawText(mark, Qt::AlignCenter, QStringLiteral("↪"));
    } else {
        Orvex::theme->getIcon(getIconName(line)).paint(&painter, mark);
    }
}

int ConsoleGutter::getMarkSize() const
{
    return view->fontMetrics().ascent();
}

int ConsoleGutter::getTimeWidth() const
{
    return view->fontMetrics().horizontalAdvance(QString::fromLatin1(timePattern));
}

} // namespace Zandu
