#ifndef FOUNDATION_FATAL_H
#define FOUNDATION_FATAL_H

#include <foundation/InternalError.h>
#include <foundation/Text.h>

namespace Orvex
{

/// A state that must not be reached, with named details that help to find out how it was.
class ORVEX_EXPORT Fatal : public InternalError
{
public:
    explicit Fatal(const std::string& text);
    Fatal(const Fatal&) = default;
    Fatal& operator=(const Fatal&) = default;
    ~Fatal() override;

    /// Adds a detail; the value may be of any type that Orvex::getLabel takes.
    template <class T>
    Fatal& with(const std::string& name, T value)
    {
        addDetail(name, getLabel(value));
        return *this;
    }
};

} // namespace Orvex

#endif
