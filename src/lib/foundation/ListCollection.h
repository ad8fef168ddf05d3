#ifndef FOUNDATION_LISTCOLLECTION_H
#define FOUNDATION_LISTCOLLECTION_H

#include <foundation/ContainerCollectionDriver.h>
#include <foundation/Export.h>
#include <foundation/ListLocator.h>
#include <foundation/ListReverseLocator.h>

#include <list>

namespace Orvex
{

/// A view of a std::list.
template <class T>
class ORVEX_EXPORT ListCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public ContainerCollectionDriver<std::list<T>>
    {
    public:
        using ContainerCollectionDriver<std::list<T>>::ContainerCollectionDriver;

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override { return ListLocator<T>(this->getContainer()); }
        Locator<T> getReverseLocator() const override
        {
            return ListReverseLocator<T>(this->getContainer());
        }
    };

    /// The container has to outlive the view, its copies and their locators.
    explicit ListCollection(const std::list<T>& viewed)
        : Collection<T>(new Driver(viewed))
    {
    }
    explicit ListCollection(const std::list<T>&&) = delete;
};

} // namespace Orvex

#endif
