#ifndef FOUNDATION_REVERSELOCATOR_H
#define FOUNDATION_REVERSELOCATOR_H

#include <foundation/Locator.h>

#include <list>

namespace Orvex
{

/// Walks the elements that another locator has still before it in reverse order. It copies them
/// when it is made and then no longer depends on where they came from.
template <class T>
class ORVEX_EXPORT ReverseLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public Locator<T>::Driver
    {
    public:
        explicit Driver(const Locator<T>& source)
        {
            for (Locator<T> locator(source); locator.isValid(); locator.progress()) {
                elements.push_front(locator.getCurrent());
            }
        }

        Driver* getClone() const override { return new Driver(*this); }
        T getCurrent() const override { return elements.empty() ? T() : elements.front(); }
        bool isValid() const override { return !elements.empty(); }
        void progress() override
        {
            if (!elements.empty()) {
                elements.pop_front();
            }
        }

    private:
        std::list<T> elements;
    };

    explicit ReverseLocator(const Locator<T>& source)
        : Locator<T>(new Driver(source))
    {
    }
};

} // namespace Orvex

#endif
