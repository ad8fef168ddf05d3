#include <application/DirectoryView.h>

#include <foundation/Theme.h>

#include <QPainter>

namespace Zandu
{

DirectoryView::DirectoryView(QWidget* parent)
    : QTreeView(parent)
{
}

void DirectoryView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);
    if (hasFocus() && index.row() == currentIndex().row() &&
        window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter->save();
        painter->setPen(Orvex::theme->getColor("accent"));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }
}

} // namespace Zandu
