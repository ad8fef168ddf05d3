#include <foundation/Debug.h>

namespace Orvex
{

namespace
{

bool debug = false;

} // namespace

bool isDebug()
{
    return debug;
}

void setDebug(bool enabled)
{
    debug = enabled;
}

} // namespace Orvex
