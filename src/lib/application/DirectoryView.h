#ifndef APPLICATION_DIRECTORYVIEW_H
#define APPLICATION_DIRECTORYVIEW_H

#include <QTreeView>

namespace Zandu
{

/// The entries of a directory. The row that the keys act from has a frame, and only what is
/// selected is filled: the style would fill both.
class DirectoryView : public QTreeView
{
    Q_OBJECT

public:
    explicit DirectoryView(QWidget* parent);

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
};

} // namespace Zandu

#endif
