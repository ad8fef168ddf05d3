#ifndef APP_INITIATIVE_H
#define APP_INITIATIVE_H

#include <QEvent>

class QObject;

namespace Kestoboard
{

/// Tells at whose wish something happens: a person's, or that of the panel, which looks after the
/// boards on a timer. A wait inside the one serves events of the other; the innermost counts.
///
/// Each thread has its own.
class Initiative
{
    enum class Cause { Unknown, Person, Panel };

public:
    /// Lives as long as the event is being delivered, from `notify` of the application.
    class Delivery
    {
    public:
        Delivery(const QObject* receiver, const QEvent* event);
        ~Delivery();
        Delivery(const Delivery&) = delete;
        Delivery& operator=(const Delivery&) = delete;

    private:
        const Cause former;
    };

    /// True also where no event is being delivered.
    static bool isPersons();
    /// Whether what happens is the work of a key or a button that a person has pressed.
    static bool isPress();

private:
    static Cause getNext(const QObject* receiver, QEvent::Type type, Cause current);

    static thread_local Cause cause;
};

} // namespace Kestoboard

#endif
