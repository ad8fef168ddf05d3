#ifndef FOUNDATION_OWNEDLISTCOLLECTION_H
#define FOUNDATION_OWNEDLISTCOLLECTION_H

#include <foundation/Export.h>
#include <foundation/ListCollection.h>
#include <foundation/OwnedListLocator.h>
#include <foundation/OwnedListReverseLocator.h>

#include <list>
#include <memory>
#include <utility>

namespace Orvex
{

/// A sequence without a holder elsewhere: the handle, its copies and their locators keep a list
/// alive that nobody can change.
template <class T>
class ORVEX_EXPORT OwnedListCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public ListCollection<T>::Driver
    {
    public:
        explicit Driver(const std::shared_ptr<const std::list<T>>& owned)
            : ListCollection<T>::Driver(*owned)
            , elements(owned)
        {
        }

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override { return OwnedListLocator<T>(elements); }
        Locator<T> getReverseLocator() const override
        {
            return OwnedListReverseLocator<T>(elements);
        }

    private:
        std::shared_ptr<const std::list<T>> elements;
    };

    explicit OwnedListCollection(std::list<T> owned)
        : Collection<T>(new Driver(std::make_shared<const std::list<T>>(std::move(owned))))
    {
    }
};

} // namespace Orvex

#endif
