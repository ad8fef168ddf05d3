#include <foundation/ValueSlot.h>

namespace Orvex
{

ValueSlot::ValueSlot(const std::string& slotText)
    : text(slotText)
{
}

ValueSlot::~ValueSlot() = default;

std::string ValueSlot::getDataLabel() const
{
    return text;
}

Record* ValueSlot::getDataRecord() const
{
    return nullptr;
}

bool ValueSlot::isTerminal() const
{
    return true;
}

} // namespace Orvex
