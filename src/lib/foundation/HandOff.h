#ifndef FOUNDATION_HANDOFF_H
#define FOUNDATION_HANDOFF_H

#include <utility>

#if defined(__SANITIZE_THREAD__)
#define ORVEX_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ORVEX_THREAD_SANITIZER
#endif
#endif

#ifdef ORVEX_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

namespace Orvex
{

// Qt orders what two threads do by means that the thread sanitizer does not see, since Qt is not
// compiled with it: queued calls, and the start and the end of a thread. The code that relies on
// such an order says so here. In every other build nothing of it is left.

/// Whatever this thread has written so far is for the thread that next takes over by the same key:
/// any address that both know.
inline void handOver([[maybe_unused]] const void* key)
{
#ifdef ORVEX_THREAD_SANITIZER
    __tsan_release(const_cast<void*>(key));
#endif
}

/// From here on this thread may read what was handed over by the key.
inline void takeOver([[maybe_unused]] const void* key)
{
#ifdef ORVEX_THREAD_SANITIZER
    __tsan_acquire(const_cast<void*>(key));
#endif
}

/// Hands over at its end: the last that a call does, after Qt has read for the last time what the
/// caller lent it.
class HandBack
{
public:
    explicit HandBack(const void* keyToUse)
        : key(keyToUse)
    {
    }
    ~HandBack() { handOver(key); }
    HandBack(const HandBack&) = default;
    HandBack& operator=(const HandBack&) = default;

private:
    const void* key;
};

/// Work for a queued call: the thread that posts it hands over, the thread that does it takes over,
/// and hands back in the end. Qt keeps a copy of what it is given, so every copy is a hand-off of
/// its own. Who waits for the end takes over by the key that it has given.
template <class Work>
class HandedWork
{
public:
    explicit HandedWork(Work workToDo, const void* keyOfEnd = nullptr)
        : work(std::move(workToDo))
        , endKey(keyOfEnd)
    {
        handOver(this);
    }
    ~HandedWork() { takeOver(getEndKey()); }
    HandedWork(const HandedWork& other)
        : work(other.work)
        , endKey(other.endKey)
    {
        handOver(this);
    }
    HandedWork(HandedWork&& other) noexcept
        : work(std::move(other.work))
        , endKey(other.endKey)
    {
        handOver(this);
    }
    HandedWork& operator=(const HandedWork&) = delete;
    HandedWork& operator=(HandedWork&&) = delete;

    HandBack operator()()
    {
        takeOver(this);
        work();
        return HandBack(getEndKey());
    }

private:
    const void* getEndKey() const { return endKey != nullptr ? endKey : this; }

    Work work;
    const void* endKey;
};

} // namespace Orvex

#endif
