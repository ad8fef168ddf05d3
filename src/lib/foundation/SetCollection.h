#ifndef FOUNDATION_SETCOLLECTION_H
#define FOUNDATION_SETCOLLECTION_H

#include <foundation/ContainerCollectionDriver.h>
#include <foundation/Export.h>
#include <foundation/SetLocator.h>
#include <foundation/SetReverseLocator.h>

#include <functional>
#include <set>

namespace Orvex
{

/// A view of a std::set, in its order.
template <class T, class Less = std::less<T>>
class ORVEX_EXPORT SetCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerCollectionDriver<std::set<T, Less>>
    {
    public:
        using ContainerCollectionDriver<std::set<T, Less>>::ContainerCollectionDriver;

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override { return SetLocator<T, Less>(this->getContainer()); }
        Locator<T> getReverseLocator() const override
        {
            return SetReverseLocator<T, Less>(this->getContainer());
        }
    };

    /// The container has to outlive the view, its copies and their locators.
    explicit SetCollection(const std::set<T, Less>& viewed)
        : Collection<T>(new Driver(viewed))
    {
    }
    explicit SetCollection(const std::set<T, Less>&&) = delete;
};

} // namespace Orvex

#endif
