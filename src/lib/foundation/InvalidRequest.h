#ifndef FOUNDATION_INVALIDREQUEST_H
#define FOUNDATION_INVALIDREQUEST_H

#include <foundation/InternalError.h>

namespace Orvex
{

/// An operation was called in a state or with an argument that it does not accept.
class ORVEX_EXPORT InvalidRequest : public InternalError
{
public:
    explicit InvalidRequest(const std::string& text);
    InvalidRequest(const InvalidRequest&) = default;
    InvalidRequest& operator=(const InvalidRequest&) = default;
    ~InvalidRequest() override;
};

} // namespace Orvex

#endif
