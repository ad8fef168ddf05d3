#ifndef APPLICATION_FIXEDFONT_H
#define APPLICATION_FIXEDFONT_H

#include <application/Export.h>

#include <QFont>

namespace Zandu
{

/// The font for texts whose columns have to stand under one another, in the size of the system.
ZANDU_EXPORT QFont getFixedFont();

} // namespace Zandu

#endif
