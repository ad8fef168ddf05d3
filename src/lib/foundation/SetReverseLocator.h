#ifndef FOUNDATION_SETREVERSELOCATOR_H
#define FOUNDATION_SETREVERSELOCATOR_H

#include <foundation/ContainerReverseLocatorDriver.h>
#include <foundation/Export.h>

#include <functional>
#include <set>

namespace Orvex
{

/// Walks a std::set, in its order from its last element to its first. It sees what is in the
/// container at each step.
template <class T, class Less = std::less<T>>
class ORVEX_EXPORT SetReverseLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerReverseLocatorDriver<std::set<T, Less>>
    {
    public:
        using ContainerReverseLocatorDriver<std::set<T, Less>>::ContainerReverseLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit SetReverseLocator(const std::set<T, Less>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
    explicit SetReverseLocator(const std::set<T, Less>&&) = delete;
};

} // namespace Orvex

#endif
