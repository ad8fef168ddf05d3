#include "app/Initiative.h"

#include <QTimer>

namespace Kestoboard
{

thread_local Initiative::Cause Initiative::cause = Initiative::Cause::Unknown;

Initiative::Cause Initiative::getNext(const QObject* receiver, QEvent::Type type, Cause current)
{
    switch (type) {
    case QEvent::Timer:
        // The timers that a widget has inside serve what a person does with it.
        return qobject_cast<const QTimer*>(receiver) != nullptr ? Cause::Panel : Cause::Unknown;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::TouchEnd:
    case QEvent::Drop:
        return Cause::Person;
    default:
        return current;
    }
}

Initiative::Delivery::Delivery(const QObject* receiver, const QEvent* event)
    : former(cause)
{
    cause = getNext(receiver, event->type(), cause);
}

Initiative::Delivery::~Delivery()
{
    cause = former;
}

bool Initiative::isPersons()
{
    return cause != Cause::Panel;
}

bool Initiative::isPress()
{
    return cause == Cause::Person;
}

} // namespace Kestoboard
