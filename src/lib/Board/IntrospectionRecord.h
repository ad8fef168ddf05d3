#ifndef BOARD_INTROSPECTIONRECORD_H
#define BOARD_INTROSPECTIONRECORD_H

#include <string>

namespace Orvex
{
class QStuff;
class Record;
class Slot;
} // namespace Orvex

namespace Board
{

/// A new record labelled as the object calls itself, with a header; null when the object has none.
/// The caller owns it.
Orvex::Record* makeRecord(const Orvex::QStuff& object, const std::string& header);

/// Names a slot and hands it to the record; a null slot is passed over.
void addSlot(Orvex::Record* record, const std::string& name, Orvex::Slot* slot);

} // namespace Board

#endif
