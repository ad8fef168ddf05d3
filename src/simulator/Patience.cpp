#include "Patience.h"

#include <algorithm>
#include <thread>
#include <unistd.h>

namespace Simulator
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::duration<double> longestWait = std::chrono::hours(24);
constexpr std::chrono::milliseconds longestStep(50);
constexpr std::chrono::milliseconds fileStep(2);
constexpr std::chrono::microseconds readerStep(50);

} // namespace

Patience::Patience(const Output& answers)
    : output(answers)
    , parent(::getppid())
{
}

void Patience::wait(std::chrono::duration<double> time) const
{
    const auto end =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::min(time, longestWait));
    while (Clock::now() < end && !isAbandoned()) {
        std::this_thread::sleep_for(std::min<Clock::duration>(end - Clock::now(), longestStep));
    }
}

void Patience::waitForFile(const std::string& path) const
{
    waitUntil([&path] { return ::access(path.c_str(), F_OK) == 0; }, fileStep);
}

void Patience::waitForReader(const Output& target) const
{
    waitUntil([&target] { return !target.hasUnread(); }, readerStep);
}

void Patience::waitForEnd() const
{
    waitUntil([] { return false; }, longestStep);
}

bool Patience::isAbandoned() const
{
    return ::getppid() != parent || output.isAbandoned();
}

void Patience::waitUntil(const std::function<bool()>& condition,
                         std::chrono::microseconds step) const
{
    while (!condition() && !isAbandoned()) {
        std::this_thread::sleep_for(step);
    }
}

} // namespace Simulator
