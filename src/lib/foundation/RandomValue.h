#ifndef FOUNDATION_RANDOMVALUE_H
#define FOUNDATION_RANDOMVALUE_H

#include <foundation/Export.h>

#include <QtGlobal>

namespace Orvex
{

/// A uniformly random value, not fit for secrets. May be called from any thread.
ORVEX_EXPORT quint64 getRandomValue();

} // namespace Orvex

#endif
