#ifndef FOUNDATION_HEADERSLOT_H
#define FOUNDATION_HEADERSLOT_H

#include <foundation/Slot.h>

namespace Orvex
{

/// A heading of a record.
class ORVEX_EXPORT HeaderSlot : public Slot
{
public:
    explicit HeaderSlot(const std::string& slotText);
    ~HeaderSlot() override;

    std::string getDataLabel() const override;
    Record* getDataRecord() const override;
    bool isHeader() const override;
    bool isTerminal() const override;

private:
    std::string text;
};

} // namespace Orvex

#endif
