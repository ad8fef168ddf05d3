#include <foundation/Error.h>

namespace Orvex
{

Error::Error(const std::string& text)
    : Exception(text)
{
}

Error::~Error() = default;

Error& Error::locate(const std::string& functionName, const std::string& sourceFile,
                     unsigned long sourceLine)
{
    function = functionName;
    file = sourceFile;
    line = sourceLine;
    return *this;
}

const std::string& Error::getFunction() const
{
    return function;
}

const std::string& Error::getFile() const
{
    return file;
}

unsigned long Error::getLine() const
{
    return line;
}

const Tracker& Error::getTracker() const
{
    return tracker;
}

} // namespace Orvex
