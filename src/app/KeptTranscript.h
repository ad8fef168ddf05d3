#ifndef APP_KEPTTRANSCRIPT_H
#define APP_KEPTTRANSCRIPT_H

class QString;

namespace Kestoboard
{

/// Puts the transcript of a panel that has ended out of the way of the next one, which would begin
/// it anew: it gets a name with the date and the time, in the same directory.
///
/// False when it is still where it was. There may be nothing to keep: no transcript, or one that a
/// panel which works there by now is writing.
bool keepTranscript(const QString& directory);

} // namespace Kestoboard

#endif
