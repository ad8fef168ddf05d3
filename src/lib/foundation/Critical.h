#ifndef FOUNDATION_CRITICAL_H
#define FOUNDATION_CRITICAL_H

#include <foundation/Error.h>

namespace Orvex
{

/// The environment cannot be used: the tool is missing, a file cannot be written.
class ORVEX_EXPORT Critical : public Error
{
public:
    explicit Critical(const std::string& text);
    Critical(const Critical&) = default;
    Critical& operator=(const Critical&) = default;
    ~Critical() override;
};

} // namespace Orvex

#endif
