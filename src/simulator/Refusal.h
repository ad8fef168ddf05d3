#ifndef SIMULATOR_REFUSAL_H
#define SIMULATOR_REFUSAL_H

#include <stdexcept>

namespace Simulator
{

/// Thrown by a command that is not carried out; what() is the sentence that the person reads.
class Refusal : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Simulator

#endif
