#ifndef FOUNDATION_SUBSETCOLLECTION_H
#define FOUNDATION_SUBSETCOLLECTION_H

#include <foundation/Collection.h>
#include <foundation/Export.h>
#include <foundation/Predicate.h>
#include <foundation/SubsetLocator.h>

#include <utility>

namespace Orvex
{

/// The elements of another collection that a test accepts, in both directions. Nothing is kept:
/// each walk tests every element anew. Without a test the subset is empty.
template <class T, class C>
class ORVEX_EXPORT SubsetCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public Collection<T>::Driver
    {
    public:
        Driver(Collection<T> viewed, Predicate<T, C> test)
            : source(std::move(viewed))
            , predicate(std::move(test))
        {
        }

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override
        {
            return SubsetLocator<T, C>(source.getLocator(), predicate);
        }
        Locator<T> getReverseLocator() const override
        {
            return SubsetLocator<T, C>(source.getReverseLocator(), predicate);
        }

    private:
        Collection<T> source;
        Predicate<T, C> predicate;
    };

    SubsetCollection(const Collection<T>& viewed, const Predicate<T, C>& test)
        : Collection<T>(new Driver(viewed, test))
    {
    }
};

} // namespace Orvex

#endif
