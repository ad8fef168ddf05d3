#ifndef FOUNDATION_INTERNALERROR_H
#define FOUNDATION_INTERNALERROR_H

#include <foundation/Error.h>

namespace Orvex
{

/// A mistake inside the program. Its text carries, in one line, all that is known of it:
/// "Empty result (command: board list) [executeCommand, src/lib/Board/KSBaseHandler:212]".
/// What is not there (details, location) leaves its brackets out.
class ORVEX_EXPORT InternalError : public Error
{
public:
    explicit InternalError(const std::string& text);
    InternalError(const InternalError&) = default;
    InternalError& operator=(const InternalError&) = default;
    ~InternalError() override;

    std::string getMessage() const override;
    std::string getMessage(unsigned long steps) const override;
};

} // namespace Orvex

#endif
