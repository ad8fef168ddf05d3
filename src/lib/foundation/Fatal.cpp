#include <foundation/Fatal.h>

namespace Orvex
{

Fatal::Fatal(const std::string& text)
    : InternalError(text)
{
}

Fatal::~Fatal() = default;

} // namespace Orvex
