#include <foundation/Slot.h>

#include <foundation/Record.h>

namespace Orvex
{

Slot::Slot() = default;

Slot::~Slot()
{
    setOwner(nullptr);
}

bool Slot::isHeader() const
{
    return false;
}

std::string Slot::_getLabel() const
{
    return name;
}

void Slot::setName(const std::string& slotName)
{
    name = slotName;
}

void Slot::setOwner(Record* record)
{
    if (record == owner) {
        return;
    }
    if (owner != nullptr) {
        owner->remove(this);
    }
    owner = record;
    if (owner != nullptr) {
        owner->append(this);
    }
}

} // namespace Orvex
