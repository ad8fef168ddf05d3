#ifndef FOUNDATION_MAPREVERSELOCATOR_H
#define FOUNDATION_MAPREVERSELOCATOR_H

#include <foundation/ContainerReverseLocatorDriver.h>
#include <foundation/Export.h>

#include <functional>
#include <map>

namespace Orvex
{

/// Walks the mapped values of a std::map, in the order of the keys from its last element to its
/// first. It sees what is in the container at each step.
template <class K, class V, class Less = std::less<K>>
class ORVEX_EXPORT MapReverseLocator : public Locator<V>
{
public:
    class ORVEX_EXPORT Driver : public ContainerReverseLocatorDriver<std::map<K, V, Less>>
    {
    public:
        using ContainerReverseLocatorDriver<std::map<K, V, Less>>::ContainerReverseLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit MapReverseLocator(const std::map<K, V, Less>& walked)
        : Locator<V>(new Driver(walked))
    {
    }
    explicit MapReverseLocator(const std::map<K, V, Less>&&) = delete;
};

} // namespace Orvex

#endif
