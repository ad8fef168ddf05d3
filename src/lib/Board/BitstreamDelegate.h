#ifndef BOARD_BITSTREAMDELEGATE_H
#define BOARD_BITSTREAMDELEGATE_H

#include <Board/Export.h>

#include <QStyledItemDelegate>

namespace Board
{

/// Paints a row of the recent files as a card: an icon, the file name, and a second line that says
/// what the file is.
///
/// The path of a row stands in `Qt::UserRole`, the name in `Qt::DisplayRole`; the suffix of the
/// path decides whether it is a bitstream file. Other roles are not looked at. GUI thread.
class BOARD_EXPORT BitstreamDelegate : public QStyledItemDelegate
{
public:
    explicit BitstreamDelegate(QObject* parent);
    ~BitstreamDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The size of a card, the same for every row.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace Board

#endif
