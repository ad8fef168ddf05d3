#include <foundation/QStuff.h>

#include <foundation/StandardSlot.h>

namespace Orvex
{

QStuff::QStuff(QObject* parent)
    : QObject(parent)
{
}

QStuff::~QStuff() = default;

std::string QStuff::_getLabel() const
{
    return getAlias();
}

Slot* QStuff::_getSlot() const
{
    return new StandardSlot<QStuff*>(this);
}

Record* QStuff::_getRecord() const
{
    return nullptr;
}

bool QStuff::_hasRecord() const
{
    return false;
}

void QStuff::preDestroy() {}

std::string QStuff::getAlias() const
{
    return metaObject()->className();
}

} // namespace Orvex
