#ifndef FOUNDATION_DESCRIPTORS_H
#define FOUNDATION_DESCRIPTORS_H

#include <foundation/Export.h>

namespace Orvex
{

/// Whether the process can open that many more files at this moment.
///
/// Asked before a thread with an event loop is started: the loop needs a descriptor, and Qt ends
/// the whole process where it gets none. From any thread.
ORVEX_EXPORT bool hasFreeDescriptors(int count);

} // namespace Orvex

#endif
