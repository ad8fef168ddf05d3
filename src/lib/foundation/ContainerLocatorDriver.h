#ifndef FOUNDATION_CONTAINERLOCATORDRIVER_H
#define FOUNDATION_CONTAINERLOCATORDRIVER_H

#include <foundation/ContainerElement.h>
#include <foundation/Export.h>
#include <foundation/Locator.h>

namespace Orvex
{

/// What the locators over lists, sets and maps have in common: the address of the container and a
/// position in it.
template <class Container>
class ORVEX_EXPORT ContainerLocatorDriver
    : public Locator<typename ContainerElement<Container>::Type>::Driver
{
public:
    using Element = ContainerElement<Container>;

    explicit ContainerLocatorDriver(const Container& walked)
        : container(&walked)
        , position(walked.begin())
    {
    }

    typename Element::Type getCurrent() const override
    {
        return position != container->end() ? Element::get(position) : typename Element::Type();
    }
    bool isValid() const override { return position != container->end(); }
    void progress() override
    {
        if (position != container->end()) {
            ++position;
        }
    }

private:
    const Container* container;
    typename Container::const_iterator position;
};

} // namespace Orvex

#endif
