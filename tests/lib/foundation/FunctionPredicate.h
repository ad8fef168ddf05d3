#ifndef TESTS_FOUNDATION_FUNCTIONPREDICATE_H
#define TESTS_FOUNDATION_FUNCTIONPREDICATE_H

#include <foundation/Predicate.h>

#include <functional>
#include <utility>

/// Accepts what a function accepts.
template <class T>
class FunctionPredicate : public Orvex::Predicate<T, bool>
{
public:
    class Driver : public Orvex::Predicate<T, bool>::Driver
    {
    public:
        explicit Driver(std::function<bool(const T&)> asked)
            : function(std::move(asked))
        {
        }

        using Orvex::Predicate<T, bool>::Driver::getClone;
        Driver* getClone() const override { return new Driver(*this); }
        bool accept(const T& element) const override { return function(element); }

    private:
        std::function<bool(const T&)> function;
    };

    explicit FunctionPredicate(std::function<bool(const T&)> asked)
        : Orvex::Predicate<T, bool>(new Driver(std::move(asked)))
    {
    }
};

#endif
