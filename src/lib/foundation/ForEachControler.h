#ifndef FOUNDATION_FOREACHCONTROLER_H
#define FOUNDATION_FOREACHCONTROLER_H

#include <foundation/Collection.h>
#include <foundation/Export.h>
#include <foundation/Locator.h>

namespace Orvex
{

/// The loop over a collection:
///
///     std::string item;
///     for (ForEachControler<std::string> loop(item, collection); loop.next();) { ... }
///
/// The body runs when the walk has already moved on, so that it may destroy the element that it
/// was given and remove it from the container.
template <class T>
class ORVEX_EXPORT ForEachControler
{
public:
    /// The loop variable has to outlive the loop; the collection is needed by the constructor only.
    ForEachControler(T& loopVariable, const Collection<T>& collection)
        : variable(&loopVariable)
    {
        _continue = true;
        // The loop walks a copy of the handle, as every reader of a view has its own.
        locator = Collection<T>(collection).getLocator();
    }
    ForEachControler(const ForEachControler&) = delete;
    ForEachControler& operator=(const ForEachControler&) = delete;

    /// Puts the next element into the loop variable; false when there is none.
    bool next()
    {
        if (!locator.isValid()) {
            locator = Locator<T>();
            _continue = false;
            return false;
        }
        *variable = locator.getCurrent();
        locator.progress();
        return true;
    }

    /// True from the start of a loop on this thread until one has come to its end; a body that
    /// leaves its loop early leaves it true.
    static inline thread_local bool _continue = false;

private:
    T* variable;
    Locator<T> locator;
};

} // namespace Orvex

#endif
