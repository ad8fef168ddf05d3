#ifndef FOUNDATION_SLOT_H
#define FOUNDATION_SLOT_H

#include <foundation/Export.h>

#include <string>

namespace Orvex
{

class Record;

/// A named view of one value within a record.
class ORVEX_EXPORT Slot
{
public:
    Slot();
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;

    /// The value as text.
    virtual std::string getDataLabel() const = 0;
    /// A new record of the value, or null when it has none; the caller owns it.
    virtual Record* getDataRecord() const = 0;
    /// Whether this is a heading of the record and not a value.
    virtual bool isHeader() const;
    /// Whether there is nothing to be seen inside the value.
    virtual bool isTerminal() const = 0;
    virtual ~Slot();
    /// The name of the slot.
    virtual std::string _getLabel() const;

    void setName(const std::string& slotName);
    /// Appends the slot to a record, which owns it from then on, and takes it from the one that
    /// owned it before. Null gives the slot back to the caller.
    void setOwner(Record* record);

private:
    std::string name;
    Record* owner = nullptr;
};

} // namespace Orvex

#endif
