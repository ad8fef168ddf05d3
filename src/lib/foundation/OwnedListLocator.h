#ifndef FOUNDATION_OWNEDLISTLOCATOR_H
#define FOUNDATION_OWNEDLISTLOCATOR_H

#include <foundation/Export.h>
#include <foundation/ListLocator.h>

#include <list>
#include <memory>

namespace Orvex
{

/// Walks a list that it keeps alive together with others.
template <class T>
class ORVEX_EXPORT OwnedListLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ListLocator<T>::Driver
    {
    public:
        explicit Driver(const std::shared_ptr<const std::list<T>>& walked)
            : ListLocator<T>::Driver(*walked)
            , elements(walked)
        {
        }

        Driver* getClone() const override { return new Driver(*this); }

    private:
        std::shared_ptr<const std::list<T>> elements;
    };

    /// The list must not be null.
    explicit OwnedListLocator(const std::shared_ptr<const std::list<T>>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
};

} // namespace Orvex

#endif
