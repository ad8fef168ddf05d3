#ifndef FOUNDATION_PREDICATE_H
#define FOUNDATION_PREDICATE_H

#include <foundation/ClonedPointer.h>
#include <foundation/Export.h>
#include <foundation/Label.h>

#include <typeinfo>

namespace Orvex
{

/// A test of one element of type T: a handle over a driver that it owns. C is the type of a context
/// that a driver may want for its clone. A null handle accepts nothing.
template <class T, class C>
class ORVEX_EXPORT Predicate
{
public:
    class ORVEX_EXPORT Driver
    {
    public:
        virtual ~Driver() = default;
        Driver& operator=(const Driver&) = delete;

        /// A new driver of the same test; the caller owns it.
        virtual Driver* getClone() const = 0;
        /// The same for a context, which most tests do not need.
        virtual Driver* getClone(const C& /*context*/) const { return getClone(); }
        virtual Label _getLabel() const { return getClassLabel(typeid(*this)); }
        virtual bool accept(const T& element) const = 0;

    protected:
        Driver() = default;
        Driver(const Driver&) = default;
    };

    /// A null handle.
    Predicate() = default;
    /// Takes the ownership of the driver, which may be null.
    explicit Predicate(Driver* owned)
        : driver(owned)
    {
    }

    bool isNull() const { return !driver; }
    bool accept(const T& element) const { return driver && driver->accept(element); }

private:
    ClonedPointer<Driver> driver;
};

} // namespace Orvex

#endif
