#ifndef FOUNDATION_SETLOCATOR_H
#define FOUNDATION_SETLOCATOR_H

#include <foundation/ContainerLocatorDriver.h>
#include <foundation/Export.h>

#include <functional>
#include <set>

namespace Orvex
{

/// Walks a std::set, in its order. It sees what is in the container at each step.
template <class T, class Less = std::less<T>>
class ORVEX_EXPORT SetLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerLocatorDriver<std::set<T, Less>>
    {
    public:
        using ContainerLocatorDriver<std::set<T, Less>>::ContainerLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit SetLocator(const std::set<T, Less>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
    explicit SetLocator(const std::set<T, Less>&&) = delete;
};

} // namespace Orvex

#endif
