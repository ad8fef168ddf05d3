#ifndef FOUNDATION_NOTPREDICATE_H
#define FOUNDATION_NOTPREDICATE_H

#include <foundation/Export.h>
#include <foundation/Predicate.h>

namespace Orvex
{

/// Accepts what another test does not accept. Over a null test it accepts everything.
template <class T>
class ORVEX_EXPORT NotPredicate : public Predicate<T, bool>
{
public:
    template <class C>
    class ORVEX_EXPORT Driver : public Predicate<T, bool>::Driver
    {
    public:
        explicit Driver(const Predicate<T, C>& negated)
            : inner(negated)
        {
        }

        using Predicate<T, bool>::Driver::getClone;
        Driver* getClone() const override { return new Driver(*this); }
        bool accept(const T& element) const override { return !inner.accept(element); }

    private:
        Predicate<T, C> inner;
    };

    explicit NotPredicate(const Predicate<T, bool>& negated)
        : Predicate<T, bool>(new Driver<bool>(negated))
    {
    }
};

} // namespace Orvex

#endif
