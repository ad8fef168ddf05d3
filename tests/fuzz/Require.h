#ifndef FUZZ_REQUIRE_H
#define FUZZ_REQUIRE_H

#include <stdexcept>

namespace Fuzz
{

/// What a target throws when a reader breaks its promise. Nobody catches it while fuzzing: the
/// input is kept.
class Violation : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

/// Throws a Violation with the promise unless it holds.
inline void require(bool holds, const char* promise)
{
    if (!holds) {
        throw Violation(promise);
    }
}

} // namespace Fuzz

#endif
