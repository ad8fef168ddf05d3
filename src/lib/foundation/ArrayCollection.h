#ifndef FOUNDATION_ARRAYCOLLECTION_H
#define FOUNDATION_ARRAYCOLLECTION_H

#include <foundation/ArrayLocator.h>
#include <foundation/ArrayReverseLocator.h>
#include <foundation/Collection.h>
#include <foundation/Export.h>

namespace Orvex
{

/// A view of an array of N elements.
template <class T, unsigned N>
class ORVEX_EXPORT ArrayCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public Collection<T>::Driver
    {
    public:
        explicit Driver(const T (&viewed)[N])
            : elements(&viewed)
        {
        }

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override { return ArrayLocator<T, N>(*elements); }
        Locator<T> getReverseLocator() const override
        {
            return ArrayReverseLocator<T, N>(*elements);
        }
        unsigned long getCount() const override { return N; }
        T getFirst() const override { return (*elements)[0]; }
        T getLast() const override { return (*elements)[N - 1]; }
        bool isEmpty() const override { return false; }
        bool hasCount(unsigned long count) const override { return count == N; }

    private:
        const T (*elements)[N];
    };

    /// The array has to outlive the view, its copies and their locators.
    explicit ArrayCollection(const T (&viewed)[N])
        : Collection<T>(new Driver(viewed))
    {
    }
    explicit ArrayCollection(const T (&&)[N]) = delete;
};

} // namespace Orvex

#endif
