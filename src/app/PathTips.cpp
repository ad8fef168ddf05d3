#include "app/PathTips.h"

#include <foundation/PlainText.h>

#include <QAbstractItemView>
#include <QDir>
#include <QHelpEvent>
#include <QToolTip>

namespace Kestoboard
{

PathTips::PathTips(QAbstractItemView* list)
    : QObject(list)
    , view(list)
{
    view->viewport()->installEventFilter(this);
}

bool PathTips::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip) {
        return QObject::eventFilter(watched, event);
    }
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QModelIndex entry = view->indexAt(help->pos());
    const QString path = QDir::toNativeSeparators(entry.data(Qt::UserRole).toString());
    // Nothing is shown where there is no entry.
    QToolTip::showText(help->globalPos(), path.isEmpty() ? path : Orvex::getLiteral(path),
                       view->viewport(), view->visualRect(entry));
    return true;
}

} // namespace Kestoboard
