#ifndef FOUNDATION_VALUESLOT_H
#define FOUNDATION_VALUESLOT_H

#include <foundation/Slot.h>

namespace Orvex
{

/// A slot that holds a copy of a plain value, as text.
class ORVEX_EXPORT ValueSlot : public Slot
{
public:
    explicit ValueSlot(const std::string& slotText);
    ~ValueSlot() override;

    std::string getDataLabel() const override;
    Record* getDataRecord() const override;
    bool isTerminal() const override;

private:
    std::string text;
};

} // namespace Orvex

#endif
