#ifndef FOUNDATION_DEBUG_H
#define FOUNDATION_DEBUG_H

#include <foundation/Export.h>

namespace Orvex
{

/// Whether the program runs in debug mode; false unless the application said otherwise. It decides
/// whether commands can be typed, whether they are sent, and which files are offered.
ORVEX_EXPORT bool isDebug();

/// Called by the application before it makes its first window and its first thread.
ORVEX_EXPORT void setDebug(bool enabled);

} // namespace Orvex

#endif
