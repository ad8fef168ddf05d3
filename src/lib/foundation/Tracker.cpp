#include <foundation/Tracker.h>

namespace Orvex
{

Tracker::Tracker()
    : time(Clock::now())
{
}

Tracker::Clock::time_point Tracker::getTime() const
{
    return time;
}

} // namespace Orvex
