#ifndef SUPPORT_PAINTCOUNTER_H
#define SUPPORT_PAINTCOUNTER_H

#include <QEvent>
#include <QObject>

namespace Test
{

/// Counts how often the widgets are painted on which it is installed as an event filter.
class PaintCounter : public QObject
{
public:
    int paints = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace Test

#endif
