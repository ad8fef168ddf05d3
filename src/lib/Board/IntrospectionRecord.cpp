#include <Board/IntrospectionRecord.h>

#include <foundation/QStuff.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>

namespace Board
{

Orvex::Record* makeRecord(const Orvex::QStuff& object, const std::string& header)
{
    if (!object._hasRecord()) {
        return nullptr;
    }
    auto* const record = new Orvex::Record(object._getLabel());
    record->addHeader(header);
    return record;
}

void addSlot(Orvex::Record* record, const std::string& name, Orvex::Slot* slot)
{
    if (slot != nullptr) {
        slot->setName(name);
        slot->setOwner(record);
    }
}

} // namespace Board
