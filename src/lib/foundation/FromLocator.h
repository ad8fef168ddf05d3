#ifndef FOUNDATION_FROMLOCATOR_H
#define FOUNDATION_FROMLOCATOR_H

#include <foundation/Export.h>
#include <foundation/Locator.h>

#include <utility>

namespace Orvex
{

/// Walks the tail of another walk that begins at the first element equal to a value; nothing when
/// the value does not occur.
template <class T>
class ORVEX_EXPORT FromLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public Locator<T>::Driver
    {
    public:
        Driver(Locator<T> walked, T wanted)
            : source(std::move(walked))
            , value(std::move(wanted))
        {
            while (source.isValid() && !(source.getCurrent() == value)) {
                source.progress();
            }
        }

        Driver* getClone() const override { return new Driver(*this); }
        T getCurrent() const override { return source.getCurrent(); }
        bool isValid() const override { return source.isValid(); }
        void progress() override
        {
            if (source.isValid()) {
                source.progress();
            }
        }

    private:
        // A clone stands where the original does and must not search again.
        Driver(const Driver&) = default;

        Locator<T> source;
        T value;
    };

    FromLocator(Locator<T> walked, T wanted)
        : Locator<T>(new Driver(std::move(walked), std::move(wanted)))
    {
    }
};

} // namespace Orvex

#endif
