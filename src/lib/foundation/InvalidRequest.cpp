#include <foundation/InvalidRequest.h>

namespace Orvex
{

InvalidRequest::InvalidRequest(const std::string& text)
    : InternalError(text)
{
}

InvalidRequest::~InvalidRequest() = default;

} // namespace Orvex
