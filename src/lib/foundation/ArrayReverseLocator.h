#ifndef FOUNDATION_ARRAYREVERSELOCATOR_H
#define FOUNDATION_ARRAYREVERSELOCATOR_H

#include <foundation/Export.h>
#include <foundation/Locator.h>

#include <limits>

namespace Orvex
{

/// Walks an array of N elements from the last to the first.
template <class T, unsigned N>
class ORVEX_EXPORT ArrayReverseLocator : public Locator<T>
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
        bool isValid() const override { return index != std::numeric_limits<unsigned>::max(); }
        void progress() override
        {
            if (isValid()) {
                --index;
            }
        }

    private:
        const T* elements;
        /// Wraps past 0 to the largest value at the end of the walk.
        unsigned index = N - 1;
    };

    /// The array has to outlive the locator and its copies.
    explicit ArrayReverseLocator(const T (&walked)[N])
        : Locator<T>(new Driver(walked))
    {
    }
    explicit ArrayReverseLocator(const T (&&)[N]) = delete;
};

} // namespace Orvex

#endif
