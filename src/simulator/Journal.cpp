#include "Journal.h"

#include "Descriptor.h"
#include "Output.h"
#include "Refusal.h"

#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace Simulator
{

namespace
{

int openForAppending(const std::string& path)
{
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
}

} // namespace

void Journal::open(const std::string& path)
{
    if (!path.empty()) {
        const Descriptor probe(openForAppending(path));
        if (!probe.isOpen()) {
            throw Refusal("Journal " + path + ": " + std::generic_category().message(errno));
        }
    }
    file = path;
}

void Journal::append(const std::string& line) const
{
    if (file.empty()) {
        return;
    }
    const Descriptor descriptor(openForAppending(file));
    if (descriptor.isOpen()) {
        Output(descriptor.get()).write(line + "\n");
    }
}

} // namespace Simulator
