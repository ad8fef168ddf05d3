#ifndef SIMULATOR_DESCRIPTOR_H
#define SIMULATOR_DESCRIPTOR_H

#include <unistd.h>

namespace Simulator
{

/// Owns a file descriptor of the system and closes it at the end.
class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : number(descriptor)
    {
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(number);
        }
    }

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

private:
    int number;
};

} // namespace Simulator

#endif
