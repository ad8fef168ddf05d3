#ifndef FOUNDATION_TEXT_H
#define FOUNDATION_TEXT_H

#include <foundation/Collection.h>
#include <foundation/Export.h>
#include <foundation/RandomValue.h>

#include <string>

class QString;

namespace Orvex
{

// All functions of this file may be called from any thread.

/// A text that a person or Qt made, in UTF-8, with every character kept.
ORVEX_EXPORT std::string getLabel(const QString& text);
/// The value in decimal.
/// @{
ORVEX_EXPORT std::string getLabel(const int& value);
ORVEX_EXPORT std::string getLabel(unsigned long value);
/// @}
/// The same text.
ORVEX_EXPORT std::string getLabel(const std::string& text);

/// The pieces of a text between the occurrences of a separator, in their order. Empty pieces are
/// kept, so that an empty text gives one empty piece. An empty separator separates nothing. The
/// result and its locators own what they walk.
ORVEX_EXPORT Collection<std::string> getSplitted(const std::string& text,
                                                 const std::string& separator);

ORVEX_EXPORT bool startsWith(const std::string& text, const std::string& prefix);

/// A strict order of two texts by their bytes.
ORVEX_EXPORT bool isAlphaLess(const std::string& first, const std::string& second);

/// The readable form of a run-time class name, or the name itself when it is none. The reference
/// is valid until the next call on the same thread.
ORVEX_EXPORT const std::string& getExternalName(const std::string& name);

} // namespace Orvex

#endif
