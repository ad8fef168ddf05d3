#include <foundation/GetSlot.h>

#include <foundation/Text.h>
#include <foundation/ValueSlot.h>

namespace Orvex
{

Slot* getSlot(const int& value)
{
    return new ValueSlot(getLabel(value));
}

Slot* getSlot(const std::string& value)
{
    return new ValueSlot(value);
}

} // namespace Orvex
