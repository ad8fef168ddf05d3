#include <foundation/FactoryFailed.h>

namespace Orvex
{

FactoryFailed::FactoryFailed(const std::string& text)
    : InternalError(text)
{
}

FactoryFailed::~FactoryFailed() = default;

} // namespace Orvex
