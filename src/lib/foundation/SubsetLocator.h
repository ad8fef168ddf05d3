#ifndef FOUNDATION_SUBSETLOCATOR_H
#define FOUNDATION_SUBSETLOCATOR_H

#include <foundation/Export.h>
#include <foundation/Locator.h>
#include <foundation/Predicate.h>

#include <utility>

namespace Orvex
{

/// Walks the elements of another walk that a test accepts. An element is tested when the locator
/// comes to it, and stays current even if it would no longer pass.
template <class T, class C>
class ORVEX_EXPORT SubsetLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public Locator<T>::Driver
    {
    public:
        Driver(Locator<T> walked, Predicate<T, C> test)
            : source(std::move(walked))
            , predicate(std::move(test))
        {
            skipRefused();
        }

        Driver* getClone() const override { return new Driver(*this); }
        T getCurrent() const override { return source.getCurrent(); }
        bool isValid() const override { return source.isValid(); }
        void progress() override
        {
            if (source.isValid()) {
                source.progress();
                skipRefused();
            }
        }

    private:
        // A clone stands where the original does and must not test again.
        Driver(const Driver&) = default;

        void skipRefused()
        {
            while (source.isValid() && !predicate.accept(source.getCurrent())) {
                source.progress();
            }
        }

        Locator<T> source;
        Predicate<T, C> predicate;
    };

    SubsetLocator(Locator<T> walked, Predicate<T, C> test)
        : Locator<T>(new Driver(std::move(walked), std::move(test)))
    {
    }
};

} // namespace Orvex

#endif
