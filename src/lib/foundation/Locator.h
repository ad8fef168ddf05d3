#ifndef FOUNDATION_LOCATOR_H
#define FOUNDATION_LOCATOR_H

#include <foundation/ClonedPointer.h>
#include <foundation/Export.h>
#include <foundation/Label.h>

#include <typeinfo>

namespace Orvex
{

/// A position in a walk over elements of type T: a handle over a driver that it owns. A copy walks
/// on by itself from the same position.
///
/// Nothing fails: past the end, and on a null handle, the current element is a default value and a
/// step does nothing. Most locators walk the live container, which has to outlive them; the node
/// that such a locator stands on must not be removed.
template <class T>
class ORVEX_EXPORT Locator
{
public:
    class ORVEX_EXPORT Driver
    {
    public:
        virtual ~Driver() = default;
        Driver& operator=(const Driver&) = delete;

        /// A new driver at the same position; the caller owns it.
        virtual Driver* getClone() const = 0;
        virtual T getCurrent() const = 0;
        virtual Label _getLabel() const { return getClassLabel(typeid(*this)); }
        virtual bool isValid() const = 0;
        virtual void progress() = 0;

    protected:
        Driver() = default;
        Driver(const Driver&) = default;
    };

    /// A null handle.
    Locator() = default;
    /// Takes the ownership of the driver, which may be null.
    explicit Locator(Driver* owned)
        : driver(owned)
    {
    }

    bool isNull() const { return !driver; }
    bool isValid() const { return driver && driver->isValid(); }
    T getCurrent() const { return driver ? driver->getCurrent() : T(); }
    void progress()
    {
        if (driver) {
            driver->progress();
        }
    }

private:
    ClonedPointer<Driver> driver;
};

} // namespace Orvex

#endif
