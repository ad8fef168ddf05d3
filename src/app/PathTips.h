#ifndef APP_PATHTIPS_H
#define APP_PATHTIPS_H

#include <QObject>

class QAbstractItemView;

namespace Kestoboard
{

/// Shows the whole path of the entry under the pointer: files of one name in several directories
/// look alike in a list of names.
class PathTips : public QObject
{
    Q_OBJECT

public:
    /// The view owns it. Its entries have their paths in `Qt::UserRole`.
    explicit PathTips(QAbstractItemView* list);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractItemView* const view;
};

} // namespace Kestoboard

#endif
