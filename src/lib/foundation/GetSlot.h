#ifndef FOUNDATION_GETSLOT_H
#define FOUNDATION_GETSLOT_H

#include <foundation/Export.h>

#include <string>

namespace Orvex
{

class Slot;

/// A new slot that holds a copy of the value, for a field of a record; the caller owns it until it
/// gives it an owner. A caller has to expect null for a value that cannot be shown.
/// @{
ORVEX_EXPORT Slot* getSlot(const int& value);
ORVEX_EXPORT Slot* getSlot(const std::string& value);
/// @}

} // namespace Orvex

#endif
