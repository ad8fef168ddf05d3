#ifndef BOARD_REPLIES_H
#define BOARD_REPLIES_H

#include <string>

/// How the tool's replies are judged: pure functions from a reply to a value. The callers tell the
/// console.
namespace Board
{

/// The text without white space at its ends and with one blank for each run of it inside.
///
/// White space is that of ASCII only: the bytes 0x85 and 0xA0, white space in Latin-1, are parts of
/// characters in UTF-8 and have to stay.
std::string getSimplified(const std::string& text);

/// The text before the first line feed, unchanged.
std::string getFirstLine(const std::string& reply);

/// Whether the tool accepted a setting: the reply holds "OK".
bool isAccepted(const std::string& reply);

/// Whether a flash programming worked: its closing mark decides.
bool isFlashProgrammed(const std::string& reply);

/// Whether a bitstream arrived: the line of counters with nothing but zeros decides, not the mark.
bool isBitstreamLoaded(const std::string& reply);

/// What a reply to "board get force_bit" says. An error goes before either state.
enum class ForceBitState { Set, NotSet, Refused, Unknown };
ForceBitState getForceBitState(const std::string& reply);

/// The tool's own words for refusing the force bit, without their prefix.
std::string getForceBitError(const std::string& reply);

} // namespace Board

#endif
