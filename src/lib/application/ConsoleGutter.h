#ifndef APPLICATION_CONSOLEGUTTER_H
#define APPLICATION_CONSOLEGUTTER_H

#include <QWidget>

namespace Zandu
{

class ConsoleView;
struct ConsoleLine;

/// The column left of the console's text: what kind of line it is and, when wanted, when it came.
class ConsoleGutter : public QWidget
{
    Q_OBJECT

public:
    explicit ConsoleGutter(ConsoleView* parent);

    bool areTimesShown() const;
    void setTimesShown(bool shown);

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int getMarkSize() const;
    int getTimeWidth() const;
    void paintLine(QPainter& painter, const ConsoleLine& line, int top) const;

    ConsoleView* view;
    bool timesShown = false;
};

} // namespace Zandu

#endif
