#ifndef SUPPORT_UNREPORTEDLEAKS_H
#define SUPPORT_UNREPORTEDLEAKS_H

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace Test
{

/// What is allocated while it lives is never reported as a leak.
///
/// For an exception that passes through the toolkit's widgets: they are compiled without
/// exceptions, so what their functions hold at that moment stays behind.
class UnreportedLeaks
{
public:
#ifdef __SANITIZE_ADDRESS__
    UnreportedLeaks()
    {
        __lsan_disable();
    }
    ~UnreportedLeaks()
    {
        __lsan_enable();
    }
#else
    UnreportedLeaks() {}
    ~UnreportedLeaks() {}
#endif
    UnreportedLeaks(const UnreportedLeaks&) = delete;
    UnreportedLeaks& operator=(const UnreportedLeaks&) = delete;
};

} // namespace Test

#endif
