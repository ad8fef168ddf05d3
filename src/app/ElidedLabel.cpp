#include "app/ElidedLabel.h"

#include <foundation/PlainText.h>

#include <QStyle>
#include <QStylePainter>

namespace Kestoboard
{

namespace
{

/// So much of a line says at least which one it is.
const int leastCharacters = 12;

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setLine(const QString& line)
{
    setText(line.simplified());
    setAccessibleName(line);
    setToolTip(Orvex::getLiteral(line));
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return {qMin(whole.width(), leastCharacters * fontMetrics().averageCharWidth()),
            whole.height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    painter.drawItemText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(),
                         fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()),
                         foregroundRole());
}

} // namespace Kestoboard
