#ifndef FOUNDATION_COLLECTION_H
#define FOUNDATION_COLLECTION_H

#include <foundation/ClonedPointer.h>
#include <foundation/Export.h>
#include <foundation/Label.h>
#include <foundation/Locator.h>
#include <foundation/RandomLocator.h>
#include <foundation/ReverseLocator.h>

#include <string>
#include <type_traits>
#include <typeinfo>

namespace Orvex
{

/// A sequence of elements of type T whose holder stays hidden: a handle over a driver that it owns.
/// A class hands out such a handle in place of its container.
///
/// The variants are classes of their own that add only a constructor; a variant is turned into a
/// plain Collection by copying or moving it. A variant over a container keeps the address of the
/// container only, which therefore has to outlive every handle and locator made from it, and shows
/// what the container holds at the moment of each step. No variant has a lock: the thread that may
/// use the container may use the view.
///
/// Nothing fails: a null handle is an empty collection, and an element that is not there is a
/// default value, the empty string or the null pointer.
template <class T>
class ORVEX_EXPORT Collection
{
public:
    class ORVEX_EXPORT Driver
    {
    public:
        virtual ~Driver() = default;
        Driver& operator=(const Driver&) = delete;

        /// A new driver of the same sequence; the caller owns it.
        virtual Driver* getClone() const = 0;
        virtual Locator<T> getLocator() const = 0;
        virtual Locator<T> getReverseLocator() const { return ReverseLocator<T>(getLocator()); }
        virtual Locator<T> getRandomLocator() const { return RandomLocator<T>(getLocator()); }
        virtual unsigned long getCount() const;
        virtual T getFirst() const { return getCurrentIfValid(getLocator()); }
        virtual T getLast() const { return getCurrentIfValid(getReverseLocator()); }
        virtual T getAt(unsigned long index) const;
        virtual Label _getLabel() const { return getClassLabel(typeid(*this)); }
        virtual bool isEmpty() const { return !getLocator().isValid(); }
        virtual bool hasCount(unsigned long count) const;

    protected:
        Driver() = default;
        Driver(const Driver&) = default;

    private:
        static T getCurrentIfValid(const Locator<T>& locator)
        {
            return locator.isValid() ? locator.getCurrent() : T();
        }
    };

    /// A null handle.
    Collection() = default;
    /// Takes the ownership of the driver, which may be null.
    explicit Collection(Driver* owned)
        : driver(owned)
    {
    }

    bool isNull() const { return !driver; }
    bool isEmpty() const { return !driver || driver->isEmpty(); }
    /// The number of elements; walks the sequence where the holder cannot answer directly.
    unsigned long getCount() const { return driver ? driver->getCount() : 0; }
    /// Whether there are exactly so many elements; never walks further than one element past them.
    bool hasCount(unsigned long count) const
    {
        return driver ? driver->hasCount(count) : count == 0;
    }
    T getFirst() const { return driver ? driver->getFirst() : T(); }
    /// On a view without an own reverse walk this copies the whole sequence.
    T getLast() const { return driver ? driver->getLast() : T(); }
    /// The element at an index that counts from 0.
    T getAt(unsigned long index) const { return driver ? driver->getAt(index) : T(); }

    /// At the first element.
    Locator<T> getLocator() const { return driver ? driver->getLocator() : Locator<T>(); }
    /// At the last element, walking towards the first.
    Locator<T> getReverseLocator() const
    {
        return driver ? driver->getReverseLocator() : Locator<T>();
    }
    /// Over a copy of the elements in random order.
    Locator<T> getRandomLocator() const
    {
        return driver ? driver->getRandomLocator() : Locator<T>();
    }

    /// Takes a sequence of texts apart: assigns its first elements to the parameters, as far as
    /// there are any, and says whether there were exactly as many elements as parameters. The
    /// parameters are assigned even when the answer is false.
    /// @{
    template <class U = T, class = std::enable_if_t<std::is_same_v<U, std::string>>>
    bool match(T& first) const
    {
        return matchAll(first);
    }
    template <class U = T, class = std::enable_if_t<std::is_same_v<U, std::string>>>
    bool match(T& first, T& second) const
    {
        return matchAll(first, second);
    }
    /// @}

private:
    template <class... Targets>
    bool matchAll(Targets&... targets) const
    {
        Locator<T> locator = getLocator();
        return (assignNext(locator, targets) && ...) && !locator.isValid();
    }

    static bool assignNext(Locator<T>& locator, T& target)
    {
        if (!locator.isValid()) {
            return false;
        }
        target = locator.getCurrent();
        locator.progress();
        return true;
    }

    ClonedPointer<Driver> driver;
};

template <class T>
unsigned long Collection<T>::Driver::getCount() const
{
    unsigned long count = 0;
    for (Locator<T> locator = getLocator(); locator.isValid(); locator.progress()) {
        ++count;
    }
    return count;
}

template <class T>
T Collection<T>::Driver::getAt(unsigned long index) const
{
    Locator<T> locator = getLocator();
    for (unsigned long position = 0; position < index && locator.isValid(); ++position) {
        locator.progress();
    }
    return getCurrentIfValid(locator);
}

template <class T>
bool Collection<T>::Driver::hasCount(unsigned long count) const
{
    if (count == 0) {
        return isEmpty();
    }
    Locator<T> locator = getLocator();
    for (unsigned long position = 0; position < count; ++position) {
        if (!locator.isValid()) {
            return false;
        }
        locator.progress();
    }
    return !locator.isValid();
}

} // namespace Orvex

#endif
