#ifndef SIMULATOR_OUTPUT_H
#define SIMULATOR_OUTPUT_H

#include <string_view>

namespace Simulator
{

/// An open file descriptor that text is written to at once, without a buffer. Does not own it.
/// What cannot be written because nobody reads any more is dropped.
class Output
{
public:
    explicit Output(int descriptor)
        : number(descriptor)
    {
    }

    /// All of `bytes` in one write, unless the other side takes only a part of them.
    void write(std::string_view bytes) const;

    /// Whether bytes are on their way that the reader has not taken; always false for anything but
    /// a pipe.
    bool hasUnread() const;

    /// Whether this is a pipe without a reader.
    bool isAbandoned() const;

private:
    int number;
};

/// Closes `descriptor` for the other side: from now on nothing can be read from it, and what is
/// written to it goes nowhere. The number itself stays taken, so that no file that is opened later
/// gets it.
void disconnect(int descriptor);

} // namespace Simulator

#endif
