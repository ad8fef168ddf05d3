#ifndef FOUNDATION_FROMCOLLECTION_H
#define FOUNDATION_FROMCOLLECTION_H

#include <foundation/Collection.h>
#include <foundation/Export.h>
#include <foundation/FromLocator.h>

#include <utility>

namespace Orvex
{

/// The tail of another collection that begins at the first element equal to a value. It is empty
/// exactly when the value is absent. Each walk searches anew.
template <class T>
class ORVEX_EXPORT FromCollection : public Collection<T>
{
public:
    class ORVEX_EXPORT Driver : public Collection<T>::Driver
    {
    public:
        Driver(Collection<T> viewed, T wanted)
            : source(std::move(viewed))
            , value(std::move(wanted))
        {
        }

        Driver* getClone() const override { return new Driver(*this); }
        Locator<T> getLocator() const override
        {
            return FromLocator<T>(source.getLocator(), value);
        }

    private:
        Collection<T> source;
        T value;
    };

    FromCollection(const Collection<T>& viewed, const T& wanted)
        : Collection<T>(new Driver(viewed, wanted))
    {
    }
};

} // namespace Orvex

#endif
