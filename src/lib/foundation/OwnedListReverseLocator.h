#ifndef FOUNDATION_OWNEDLISTREVERSELOCATOR_H
#define FOUNDATION_OWNEDLISTREVERSELOCATOR_H

#include <foundation/Export.h>
#include <foundation/ListReverseLocator.h>

#include <list>
#include <memory>

namespace Orvex
{

/// Walks a list, from its last element to its first, that it keeps alive together with others.
template <class T>
class ORVEX_EXPORT OwnedListReverseLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ListReverseLocator<T>::Driver
    {
    public:
        explicit Driver(const std::shared_ptr<const std::list<T>>& walked)
            : ListReverseLocator<T>::Driver(*walked)
            , elements(walked)
        {
        }

        Driver* getClone() const override { return new Driver(*this); }

    private:
        std::shared_ptr<const std::list<T>> elements;
    };

    /// The list must not be null.
    explicit OwnedListReverseLocator(const std::shared_ptr<const std::list<T>>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
};

} // namespace Orvex

#endif
