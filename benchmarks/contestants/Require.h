#ifndef BENCHMARKS_REQUIRE_H
#define BENCHMARKS_REQUIRE_H

#include <cstdio>
#include <cstdlib>

namespace Bench
{

/// Ends the process as failed when what a figure rests on does not hold: there is none to print
/// then. At once, since threads and nested event loops may be under way.
inline void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "This does not hold: %s.\n", what);
        std::_Exit(EXIT_FAILURE);
    }
}

} // namespace Bench

#endif
