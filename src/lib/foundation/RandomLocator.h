#ifndef FOUNDATION_RANDOMLOCATOR_H
#define FOUNDATION_RANDOMLOCATOR_H

#include <foundation/Locator.h>
#include <foundation/RandomValue.h>

#include <QtGlobal>

#include <set>
#include <utility>

namespace Orvex
{

/// Walks the elements that another locator has still before it in a random order. It copies them
/// and draws the order when it is made; a copy goes on in the same order.
template <class T>
class ORVEX_EXPORT RandomLocator : public Locator<T>
{
public:
    class ORVEX_EXPORT Driver : public Locator<T>::Driver
    {
    public:
        /// An element at the place that it has drawn.
        ///
        /// The order is not strict on purpose: it calls each of two equal places less than the
        /// other, so that the insertion into a std::set never takes an element for one that is
        /// already there. The set may be used for nothing but insertion, reading and erasing its
        /// first element, and copying.
        struct Data {
            quint64 firstKey;
            quint64 secondKey;
            T value;

            bool operator<(const Data& other) const
            {
                return firstKey != other.firstKey ? firstKey < other.firstKey
                                                  : secondKey <= other.secondKey;
            }
        };

        explicit Driver(const Locator<T>& source)
        {
            for (Locator<T> locator(source); locator.isValid(); locator.progress()) {
                T element = locator.getCurrent();
                const quint64 firstKey = getRandomValue();
                const quint64 secondKey = getRandomValue();
                elements.insert(Data{firstKey, secondKey, std::move(element)});
            }
        }

        Driver* getClone() const override { return new Driver(*this); }
        T getCurrent() const override { return isValid() ? elements.begin()->value : T(); }
        bool isValid() const override { return !elements.empty(); }
        void progress() override
        {
            if (isValid()) {
                elements.erase(elements.begin());
            }
        }

    private:
        std::set<Data> elements;
    };

    explicit RandomLocator(const Locator<T>& source)
        : Locator<T>(new Driver(source))
    {
    }
};

} // namespace Orvex

#endif
