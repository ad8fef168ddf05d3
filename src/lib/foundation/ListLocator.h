#ifndef FOUNDATION_LISTLOCATOR_H
#define FOUNDATION_LISTLOCATOR_H

#include <foundation/ContainerLocatorDriver.h>
#include <foundation/Export.h>

#include <list>

namespace Orvex
{

/// Walks a std::list. It sees what is in the container at each step.
template <class T>
class ORVEX_EXPORT ListLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerLocatorDriver<std::list<T>>
    {
    public:
        using ContainerLocatorDriver<std::list<T>>::ContainerLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit ListLocator(const std::list<T>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
    explicit ListLocator(const std::list<T>&&) = delete;
};

} // namespace Orvex

#endif
