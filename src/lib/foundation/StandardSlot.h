#ifndef FOUNDATION_STANDARDSLOT_H
#define FOUNDATION_STANDARDSLOT_H

#include <foundation/Export.h>
#include <foundation/Record.h>
#include <foundation/Slot.h>

#include <QPointer>

namespace Orvex
{

template <class T>
class StandardSlot;

/// A slot that points at an object derived from Orvex::QStuff. It may outlive the object, which it
/// then takes for null.
template <class T>
class ORVEX_EXPORT StandardSlot<T*> : public Slot
{
public:
    /// The object is not owned and may be null.
    explicit StandardSlot(const T* shownObject)
        : object(shownObject)
    {
    }

    std::string getDataLabel() const override { return object ? object->_getLabel() : "null"; }
    Record* getDataRecord() const override { return object ? object->_getRecord() : nullptr; }
    bool isTerminal() const override { return !object || !object->_hasRecord(); }

private:
    QPointer<const T> object;
};

} // namespace Orvex

#endif
