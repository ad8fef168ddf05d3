#ifndef FOUNDATION_QSTUFF_H
#define FOUNDATION_QSTUFF_H

#include <foundation/Export.h>

#include <QObject>

#include <string>

namespace Orvex
{

class Record;
class Slot;

/// The base of the long-lived objects: a QObject that can be looked into and that is unhooked from
/// the world before it is deleted.
///
/// A derived class is made by a static create (preCreate refuses, the constructor stores,
/// postCreate hooks the object up) and ended by destroy (preDestroy, then delete).
class ORVEX_EXPORT QStuff : public QObject
{
    Q_OBJECT

public:
    explicit QStuff(QObject* parent = nullptr);
    ~QStuff() override;

    /// What the object calls itself in a list; here its alias.
    virtual std::string _getLabel() const;
    /// A new slot that points at this object; the caller owns it.
    virtual Slot* _getSlot() const;
    /// A new record of the object's values, or null when it has none; the caller owns it.
    virtual Record* _getRecord() const;
    virtual bool _hasRecord() const;
    /// The first half of the end of the object, called while it is still whole.
    virtual void preDestroy();
    /// The name by which a person knows the object; here that of its class.
    virtual std::string getAlias() const;
};

} // namespace Orvex

#endif
