#ifndef APP_ELIDEDLABEL_H
#define APP_ELIDEDLABEL_H

#include <QLabel>

namespace Kestoboard
{

/// A line of plain text that gives way where there is little room: what does not fit is left out at
/// its end, and all of it stands in the tool tip.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent);

    void setLine(const QString& line);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Kestoboard

#endif
