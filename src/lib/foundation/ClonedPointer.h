#ifndef FOUNDATION_CLONEDPOINTER_H
#define FOUNDATION_CLONEDPOINTER_H

#include <memory>
#include <utility>

namespace Orvex
{

/// The one field of every handle: owns a driver, which is never shared, and copies it through its
/// getClone. Null copies to null.
template <class Driver>
class ClonedPointer
{
public:
    ClonedPointer() = default;
    explicit ClonedPointer(Driver* owned)
        : driver(owned)
    {
    }
    ClonedPointer(const ClonedPointer& other)
        : driver(other.driver ? other.driver->getClone() : nullptr)
    {
    }
    ClonedPointer(ClonedPointer&& other) noexcept = default;
    ~ClonedPointer() = default;
    ClonedPointer& operator=(ClonedPointer other) noexcept
    {
        driver.swap(other.driver);
        return *this;
    }

    explicit operator bool() const { return driver != nullptr; }
    Driver* operator->() const { return driver.get(); }

private:
    std::unique_ptr<Driver> driver;
};

} // namespace Orvex

#endif
