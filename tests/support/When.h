#ifndef SUPPORT_WHEN_H
#define SUPPORT_WHEN_H

#include <QObject>
#include <QTimer>

namespace Test
{

/// Does something once, from the event loop, as soon as a condition holds: for what has to happen
/// in the middle of a wait. The context's end takes it back.
template <class Condition, class Action>
void when(QObject* context, Condition condition, Action action)
{
    auto* const timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [timer, condition, action] {
        if (condition()) {
            timer->stop();
            timer->deleteLater();
            action();
        }
    });
    timer->start(1);
}

} // namespace Test

#endif
