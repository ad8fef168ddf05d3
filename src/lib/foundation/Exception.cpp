#include <foundation/Exception.h>

#include <foundation/Label.h>

#include <typeinfo>

namespace Orvex
{

Exception::Exception(const std::string& text)
    : message(text)
{
}

Exception::~Exception() = default;

std::string Exception::getMessage() const
{
    return message;
}

std::string Exception::getMessage(unsigned long steps) const
{
    return std::string(2 * steps, ' ') + Exception::getMessage();
}

std::string Exception::_getLabel() const
{
    return getClassLabel(typeid(*this)).getText();
}

const std::list<std::string>& Exception::getDetailNames() const
{
    return detailNames;
}

const std::list<std::string>& Exception::getDetailValues() const
{
    return detailValues;
}

void Exception::addDetail(const std::string& name, const std::string& value)
{
    detailNames.push_back(name);
    detailValues.push_back(value);
}

} // namespace Orvex
