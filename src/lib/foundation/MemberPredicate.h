#ifndef FOUNDATION_MEMBERPREDICATE_H
#define FOUNDATION_MEMBERPREDICATE_H

#include <foundation/Export.h>
#include <foundation/Predicate.h>

namespace Orvex
{

/// Asks a const member function of the element, which is a pointer and must not be null:
/// MemberPredicate<Door*, bool>(&Door::isOpen).
template <class T, class C>
class ORVEX_EXPORT MemberPredicate : public Predicate<T, C>
{
public:
    template <class F>
    class ORVEX_EXPORT Driver : public Predicate<T, C>::Driver
    {
    public:
        explicit Driver(F question)
            : member(question)
        {
        }

        using Predicate<T, C>::Driver::getClone;
        Driver* getClone() const override { return new Driver(*this); }
        bool accept(const T& element) const override { return (element->*member)(); }

    private:
        F member;
    };

    template <class Asked>
    explicit MemberPredicate(bool (Asked::*question)() const)
        : Predicate<T, C>(new Driver<bool (Asked::*)() const>(question))
    {
    }
};

} // namespace Orvex

#endif
