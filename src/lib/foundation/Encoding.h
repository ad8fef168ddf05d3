#ifndef FOUNDATION_ENCODING_H
#define FOUNDATION_ENCODING_H

#include <foundation/Export.h>

#include <QString>

#include <string>

namespace Orvex
{

// Bytes of the board tool become a QString of one character for each byte, and come back unchanged
// whatever they are. All functions of this file may be called from any thread.

/// One character for each byte (ISO 8859-1), NUL included.
ORVEX_EXPORT QString fromAscii(const std::string& bytes);

/// The inverse of fromAscii. A character above U+00FF has no byte and becomes "?".
ORVEX_EXPORT std::string toAscii(const QString& text);
/// The same without needing more memory than the text and the bytes; the text is empty afterwards.
ORVEX_EXPORT std::string toAscii(QString&& text);

/// Bytes as a person should see them: as UTF-8 when all of them are valid UTF-8, else one character
/// for each byte.
ORVEX_EXPORT QString getReadable(const std::string& bytes);

} // namespace Orvex

#endif
