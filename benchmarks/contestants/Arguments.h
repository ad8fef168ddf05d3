#ifndef BENCHMARKS_ARGUMENTS_H
#define BENCHMARKS_ARGUMENTS_H

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Bench
{

/// The arguments of a contestant. Too few of them end the process.
class Arguments
{
public:
    Arguments(int argc, char** argv, int needed)
        : count(argc - 1)
        , values(argv + 1)
    {
        if (count < needed) {
            std::fprintf(stderr, "%s: %d arguments are needed, see the top of its source.\n",
                         argv[0], needed);
            std::exit(EXIT_FAILURE);
        }
    }

    int getCount() const { return count; }
    std::string getText(int index) const { return values[index]; }
    long getNumber(int index) const { return std::strtol(values[index], nullptr, 10); }

private:
    int count;
    char** values;
};

} // namespace Bench

#endif
