#ifndef FOUNDATION_FACTORYFAILED_H
#define FOUNDATION_FACTORYFAILED_H

#include <foundation/InternalError.h>

namespace Orvex
{

/// A factory refused its arguments; nothing was made.
class ORVEX_EXPORT FactoryFailed : public InternalError
{
public:
    explicit FactoryFailed(const std::string& text);
    FactoryFailed(const FactoryFailed&) = default;
    FactoryFailed& operator=(const FactoryFailed&) = default;
    ~FactoryFailed() override;
};

} // namespace Orvex

#endif
