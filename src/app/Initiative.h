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
        const bool wasPanels;
    };

    /// True also where no event is being delivered.
    static bool isPersons();
};

} // namespace Kestoboard

#endif
