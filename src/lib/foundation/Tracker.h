#ifndef FOUNDATION_TRACKER_H
#define FOUNDATION_TRACKER_H

#include <foundation/Export.h>

#include <chrono>

namespace Orvex
{

/// Remembers when a failure was made; a copy of the failure keeps the moment of the first.
class ORVEX_EXPORT Tracker
{
public:
    using Clock = std::chrono::system_clock;

    Tracker();

    Clock::time_point getTime() const;

private:
    Clock::time_point time;
};

} // namespace Orvex

#endif
