#ifndef FOUNDATION_PLAINTEXT_H
#define FOUNDATION_PLAINTEXT_H

#include <foundation/Export.h>

#include <QString>

#include <string>

namespace Orvex
{

// Text that somebody else has written, shown and passed on without anything in it being taken for
// an instruction. All functions of this file may be called from any thread.

/// Whether the text can be a part of a command: it holds no line feed, carriage return or NUL, each
/// of which may end a command, so that the rest would be one of its own.
ORVEX_EXPORT bool isOneLine(const QString& text);

/// The text with a visible sign in place of each character that does not show, that turns the text
/// around it, or that has a meaning of its own in a text document: \x1b, \u202e. A tab stays.
ORVEX_EXPORT QString getVisible(const QString& text);

/// The text for a terminal: as getVisible, but with its line feeds. Bytes that are not UTF-8 become
/// signs as well. Uses nothing of Qt, so that it can be called at the exit of the process.
ORVEX_EXPORT std::string getPrintable(const std::string& text);

/// The text for a place that guesses whether it is given markup, such as a tool tip or a message
/// box: it shows letter for letter there.
ORVEX_EXPORT QString getLiteral(const QString& text);

} // namespace Orvex

#endif
