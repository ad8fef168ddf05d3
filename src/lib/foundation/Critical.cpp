#include <foundation/Critical.h>

namespace Orvex
{

Critical::Critical(const std::string& text)
    : Error(text)
{
}

Critical::~Critical() = default;

} // namespace Orvex
