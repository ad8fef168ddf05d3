#ifndef FOUNDATION_CONTAINERREVERSELOCATORDRIVER_H
#define FOUNDATION_CONTAINERREVERSELOCATORDRIVER_H

#include <foundation/ContainerElement.h>
#include <foundation/Export.h>
#include <foundation/Locator.h>

#include <iterator>

namespace Orvex
{

/// What the reverse locators over lists, sets and maps have in common: the address of the container
/// and the position behind the current element.
template <class Container>
class ORVEX_EXPORT ContainerReverseLocatorDriver
    : public Locator<typename ContainerElement<Container>::Type>::Driver
{
public:
    using Element = ContainerElement<Container>;

    explicit ContainerReverseLocatorDriver(const Container& walked)
        : container(&walked)
        , position(walked.end())
    {
    }

    typename Element::Type getCurrent() const override
    {
        return position != container->begin() ? Element::get(std::prev(position))
                                              : typename Element::Type();
    }
    bool isValid() const override { return position != container->begin(); }
    void progress() override
    {
        if (position != container->begin()) {
            --position;
        }
    }

private:
    const Container* container;
    typename Container::const_iterator position;
};

} // namespace Orvex

#endif
