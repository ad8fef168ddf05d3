#ifndef FOUNDATION_MAPCOLLECTION_H
#define FOUNDATION_MAPCOLLECTION_H

#include <foundation/ContainerCollectionDriver.h>
#include <foundation/Export.h>
#include <foundation/MapLocator.h>
#include <foundation/MapReverseLocator.h>

#include <functional>
#include <map>

namespace Orvex
{

/// A view of the mapped values of a std::map, in the order of the keys.
template <class K, class V, class Less = std::less<K>>
class ORVEX_EXPORT MapCollection : public Collection<V>
{
public:
    class ORVEX_EXPORT Driver : public ContainerCollectionDriver<std::map<K, V, Less>>
    {
    public:
        using ContainerCollectionDriver<std::map<K, V, Less>>::ContainerCollectionDriver;

        Driver* getClone() const override { return new Driver(*this); }
        Locator<V> getLocator() const override
        {
            return MapLocator<K, V, Less>(this->getContainer());
        }
        Locator<V> getReverseLocator() const override
        {
            return MapReverseLocator<K, V, Less>(this->getContainer());
        }
    };

    /// The container has to outlive the view, its copies and their locators.
    explicit MapCollection(const std::map<K, V, Less>& viewed)
        : Collection<V>(new Driver(viewed))
    {
    }
    explicit MapCollection(const std::map<K, V, Less>&&) = delete;
};

} // namespace Orvex

#endif
