#ifndef TESTS_FOUNDATION_COUNTEDCOLLECTION_H
#define TESTS_FOUNDATION_COUNTEDCOLLECTION_H

#include <foundation/Collection.h>

#include <vector>

/// What was asked of a counted collection and its locators.
struct Counts {
    int drivers = 0;
    int clones = 0;
    int validityTests = 0;
    int reads = 0;
    int steps = 0;
};

/// Counts the drivers that are alive.
class CountedLife
{
public:
    explicit CountedLife(Counts& counter)
        : counts(&counter)
    {
        ++counts->drivers;
    }
    CountedLife(const CountedLife& other)
        : counts(other.counts)
    {
        ++counts->drivers;
    }
    CountedLife& operator=(const CountedLife&) = delete;
    ~CountedLife() { --counts->drivers; }

    Counts* operator->() const { return counts; }
    Counts& operator*() const { return *counts; }

private:
    Counts* counts;
};

/// A collection that overrides nothing which it need not override, and counts what it is asked.
template <class T>
class CountedCollection : public Orvex::Collection<T>
{
public:
    class LocatorDriver : public Orvex::Locator<T>::Driver
    {
    public:
        LocatorDriver(const std::vector<T>& walked, Counts& counter)
            : elements(&walked)
            , counts(counter)
        {
        }

        LocatorDriver* getClone() const override
        {
            ++counts->clones;
            return new LocatorDriver(*this);
        }
        T getCurrent() const override
        {
            ++counts->reads;
            return index < elements->size() ? (*elements)[index] : T();
        }
        bool isValid() const override
        {
            ++counts->validityTests;
            return index < elements->size();
        }
        void progress() override
        {
            ++counts->steps;
            ++index;
        }

    private:
        const std::vector<T>* elements;
        std::size_t index = 0;
        CountedLife counts;
    };

    class Driver : public Orvex::Collection<T>::Driver
    {
    public:
        Driver(const std::vector<T>& viewed, Counts& counter)
            : elements(&viewed)
            , counts(counter)
        {
        }

        Driver* getClone() const override
        {
            ++counts->clones;
            return new Driver(*this);
        }
        Orvex::Locator<T> getLocator() const override
        {
            return Orvex::Locator<T>(new LocatorDriver(*elements, *counts));
        }

    private:
        const std::vector<T>* elements;
        CountedLife counts;
    };

    CountedCollection(const std::vector<T>& viewed, Counts& counter)
        : Orvex::Collection<T>(new Driver(viewed, counter))
    {
    }
};

#endif
