#include <foundation/HeaderSlot.h>

namespace Orvex
{

HeaderSlot::HeaderSlot(const std::string& slotText)
    : text(slotText)
{
}

HeaderSlot::~HeaderSlot() = default;

std::string HeaderSlot::getDataLabel() const
{
    return text;
}

Record* HeaderSlot::getDataRecord() const
{
    return nullptr;
}

bool HeaderSlot::isHeader() const
{
    return true;
}

bool HeaderSlot::isTerminal() const
{
    return true;
}

} // namespace Orvex
