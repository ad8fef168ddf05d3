#ifndef FOUNDATION_LISTREVERSELOCATOR_H
#define FOUNDATION_LISTREVERSELOCATOR_H

#include <foundation/ContainerReverseLocatorDriver.h>
#include <foundation/Export.h>

#include <list>

namespace Orvex
{

/// Walks a std::list from its last element to its first. It sees what is in the container at each
/// step.
template <class T>
class ORVEX_EXPORT ListReverseLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerReverseLocatorDriver<std::list<T>>
    {
    public:
        using ContainerReverseLocatorDriver<std::list<T>>::ContainerReverseLocatorDriver;

        Driver* getClone() const override { return new Driver(*this); }
    };

    /// The container has to outlive the locator and its copies.
    explicit ListReverseLocator(const std::list<T>& walked)
        : Locator<T>(new Driver(walked))
    {
    }
    explicit ListReverseLocator(const std::list<T>&&) = delete;
};

} // namespace Orvex

#endif
