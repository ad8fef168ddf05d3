#include "app/EmptyListRemark.h"

#include <foundation/Theme.h>

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>

namespace Kestoboard
{

namespace
{

const int margin = 24;

} // namespace

EmptyListRemark::EmptyListRemark(QAbstractItemView* list, const QString& sentence)
    : QObject(list)
    , view(list)
    , remark(sentence)
{
    // A screen reader hears of it where the others see it.
    view->setAccessibleDescription(remark);
    view->viewport()->installEventFilter(this);
}

bool EmptyListRemark::eventFilter(QObject* watched, QEvent* event)
{
    // The list paints its entries over this, of which it has none.
    if (event->type() == QEvent::Paint && view->model()->rowCount(view->rootIndex()) == 0) {
        paint();
    }
    return QObject::eventFilter(watched, event);
}

void EmptyListRemark::paint() const
{
    QPainter painter(view->viewport());
    painter.setPen(Orvex::theme->getColor("text_light"));
    const QRect room = view->viewport()->rect().adjusted(margin, margin, -margin, -margin);
    painter.drawText(room, static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, remark);
}

} // namespace Kestoboard
