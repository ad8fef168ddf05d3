#ifndef APP_EMPTYLISTREMARK_H
#define APP_EMPTYLISTREMARK_H

#include <QObject>
#include <QString>

class QAbstractItemView;

namespace Kestoboard
{

/// Says in an empty list what belongs there and how it comes. The list itself is as it was: the
/// remark is painted on its ground.
class EmptyListRemark : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the list.
    EmptyListRemark(QAbstractItemView* list, const QString& sentence);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void paint() const;

    QAbstractItemView* const view;
    const QString remark;
};

} // namespace Kestoboard

#endif
