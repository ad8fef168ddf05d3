#ifndef FOUNDATION_CONTAINERCOLLECTIONDRIVER_H
#define FOUNDATION_CONTAINERCOLLECTIONDRIVER_H

#include <foundation/Collection.h>
#include <foundation/ContainerElement.h>
#include <foundation/Export.h>

#include <iterator>

namespace Orvex
{

/// What the views of lists, sets and maps have in common: the address of the container, which
/// answers directly whatever it can.
template <class Container>
class ORVEX_EXPORT ContainerCollectionDriver
    : public Collection<typename ContainerElement<Container>::Type>::Driver
{
public:
    using Element = ContainerElement<Container>;

    explicit ContainerCollectionDriver(const Container& viewed)
        : container(&viewed)
    {
    }

    unsigned long getCount() const override { return container->size(); }
    typename Element::Type getFirst() const override
    {
        return container->empty() ? typename Element::Type() : Element::get(container->begin());
    }
    typename Element::Type getLast() const override
    {
        return container->empty() ? typename Element::Type()
                                  : Element::get(std::prev(container->end()));
    }
    bool isEmpty() const override { return container->empty(); }
    bool hasCount(unsigned long count) const override { return getCount() == count; }

protected:
    const Container& getContainer() const { return *container; }

private:
    const Container* container;
};

} // namespace Orvex

#endif
