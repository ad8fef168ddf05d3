#ifndef FOUNDATION_MAPLOCATOR_H
#define FOUNDATION_MAPLOCATOR_H

#include <foundation/ContainerLocatorDriver.h>
#include <foundation/Export.h>

#include <functional>
#include <map>

namespace Orvex
{

/// Walks the mapped values of a std::map, in the order of the keys. It sees what is in the
/// container at each step.
template <class K, class V, class Less = std::less<K>>
class ORVEX_EXPORT MapLocator : public Locator<V>
{
public:
    class ORVEX_EXPORT Driver : public ContainerLocatorDriver<std::map<K, V, Less>>
    {
    public:
        using ContainerLocatorDriver<std::map<K, V, Less>>::ContainerLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit MapLocator(const std::map<K, V, Less>& walked)
        : Locator<V>(new Driver(walked))
    {
    }
    explicit MapLocator(const std::map<K, V, Less>&&) = delete;
};

} // namespace Orvex

#endif
