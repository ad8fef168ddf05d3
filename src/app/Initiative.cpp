#include "app/Initiative.h"

#include <QTimer>

namespace Kestoboard
{

namespace
{

thread_local bool isPanels = false;

bool getNext(const QObject* receiver, QEvent::Type type, bool current)
{
    switch (type) {
    case QEvent::Timer:
        // The timers that a widget has inside serve what a person does with it.
        return qobject_cast<const QTimer*>(receiver) != nullptr;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::TouchEnd:
    case QEvent::Drop:
        return false;
    default:
        return current;
    }
}

} // namespace

Initiative::Delivery::Delivery(const QObject* receiver, const QEvent* event)
    : wasPanels(isPanels)
{
    isPanels = getNext(receiver, event->type(), isPanels);
}

Initiative::Delivery::~Delivery()
{
    isPanels = wasPanels;
}

bool Initiative::isPersons()
{
    return !isPanels;
}

} // namespace Kestoboard
