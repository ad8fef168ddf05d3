#ifndef SIMULATOR_PATIENCE_H
#define SIMULATOR_PATIENCE_H

#include "Output.h"

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>

namespace Simulator
{

/// All waiting of the program. Every wait ends early once nobody is left to wait for: when the
/// program that started this one has ended, or has closed the pipe that the answers go to. So no
/// simulated tool outlives its panel.
class Patience
{
public:
    /// `answers` is where the answers go.
    explicit Patience(const Output& answers);

    /// For `time`, but never longer than a day.
    void wait(std::chrono::duration<double> time) const;
    void waitForFile(const std::string& path) const;
    /// Until the reader has taken all that was written to `target`.
    void waitForReader(const Output& target) const;
    /// Until nobody is left to wait for.
    void waitForEnd() const;

private:
    bool isAbandoned() const;
    void waitUntil(const std::function<bool()>& condition, std::chrono::microseconds step) const;

    Output output;
    pid_t parent;
};

} // namespace Simulator

#endif
