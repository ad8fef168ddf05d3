#ifndef FOUNDATION_ARRAYLOCATOR_H
#define FOUNDATION_ARRAYLOCATOR_H

#include <foundation/Export.h>
#include <foundation/Locator.h>

namespace Orvex
{

/// Walks an array of N elements.
template <class T, unsigned N>
class ORVEX_EXPORT ArrayLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public Locator<T>::Driver
    {
    public:
        explicit Driver(const T (&walked)[N])
            : elements(walked)
        {
        }

        Driver* getClone() const override { return new Driver(*this); }
        T getCurrent() const override { return isValid() ? elements[index] : T(); }
        bool isValid() const override { return index <= N - 1; }
        void progress() override
        {
            if (isValid()) {
                ++index;
            }
        }

    private:
        const T* elements;
        unsigned index = 0;
    };

    /// The array has to outlive the locator and its copies.
    explicit ArrayLocator(const T (&walked)[N])
        : Locator<T>(new Driver(walked))
    {
    }
    explicit ArrayLocator(const T (&&)[N]) = delete;
};

} // namespace Orvex

#endif
