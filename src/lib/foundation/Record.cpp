#include <foundation/Record.h>

#include <foundation/HeaderSlot.h>
#include <foundation/ListCollection.h>

namespace Orvex
{

Record::Record(const std::string& recordLabel)
    : label(recordLabel)
{
}

Record::~Record()
{
    // Each slot takes itself out of the list.
    while (!slotList.empty()) {
        delete slotList.back();
    }
}

void Record::addHeader(const std::string& text)
{
    (new HeaderSlot(text))->setOwner(this);
}

const std::string& Record::getLabel() const
{
    return label;
}

Collection<Slot*> Record::getSlots() const
{
    return ListCollection<Slot*>(slotList);
}

bool Record::isExpanded() const
{
    return expanded;
}

void Record::setExpanded(bool unfolded)
{
    expanded = unfolded;
}

void Record::append(Slot* slot)
{
    slotList.push_back(slot);
}

void Record::remove(Slot* slot)
{
    slotList.remove(slot);
}

} // namespace Orvex
