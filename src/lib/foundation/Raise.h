#ifndef FOUNDATION_RAISE_H
#define FOUNDATION_RAISE_H

#include <string>

namespace Orvex
{

/// Locates a failure and throws it as its exact class, an Orvex::Error or one derived from it.
template <class E>
[[noreturn]] void raise(E failure, const std::string& function, const std::string& file,
                        unsigned long line)
{
    failure.locate(function, file, line);
    throw failure;
}

} // namespace Orvex

#endif
