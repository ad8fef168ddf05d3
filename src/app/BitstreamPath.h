#ifndef APP_BITSTREAMPATH_H
#define APP_BITSTREAMPATH_H

#include <QString>

namespace Kestoboard
{

/// Says in a sentence why a file cannot be offered to the board tool; empty when it can.
QString getBitstreamComplaint(const QString& path);

} // namespace Kestoboard

#endif
