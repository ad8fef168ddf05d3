#ifndef APP_KEPTTRANSCRIPT_H
#define APP_KEPTTRANSCRIPT_H

#include <QString>

namespace Kestoboard
{

/// The transcript of a panel that has ended, which is put out of the way of the next one, that
/// would begin it anew: it gets a name with the date and the time at which it was written last, in
/// the same directory.
class KeptTranscript
{
public:
    explicit KeptTranscript(const QString& place);

    /// The name that it gets, without the directory; empty where there is no transcript.
    const QString& getName() const { return name; }

    /// Gives it that name. False when it is still where it was. There may be nothing to keep: no
    /// transcript, or one that a panel which works there by now is writing.
    bool keep() const;

private:
    const QString directory;
    const QString name;
};

} // namespace Kestoboard

#endif
