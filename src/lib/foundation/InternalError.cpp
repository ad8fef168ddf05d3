#include <foundation/InternalError.h>

namespace Orvex
{

namespace
{

std::string describeDetails(const Exception& failure)
{
    std::string text;
    auto value = failure.getDetailValues().begin();
    for (const std::string& name : failure.getDetailNames()) {
        text += text.empty() ? " (" : ", ";
        text += name + ": " + *value++;
    }
    return text.empty() ? text : text + ")";
}

std::string describeLocation(const Error& failure)
{
    if (failure.getFunction().empty() && failure.getFile().empty()) {
        return std::string();
    }
    return " [" + failure.getFunction() + ", " + failure.getFile() + ":" +
           std::to_string(failure.getLine()) + "]";
}

} // namespace

InternalError::InternalError(const std::string& text)
    : Error(text)
{
}

InternalError::~InternalError() = default;

std::string InternalError::getMessage() const
{
    return Error::getMessage() + describeDetails(*this) + describeLocation(*this);
}

std::string InternalError::getMessage(unsigned long steps) const
{
    return Error::getMessage(steps) + describeDetails(*this) + describeLocation(*this);
}

} // namespace Orvex
