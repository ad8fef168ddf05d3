#ifndef APP_OPTIONS_H
#define APP_OPTIONS_H

#include <QString>

namespace Kestoboard
{

/// What a person asked for on the command line. Paths are absolute; an empty one was not given.
struct Options {
    bool isDebug = false;
    /// Simulated boards in place of real ones.
    bool isSimulating = false;
    /// The scenario of the simulated boards; empty for the one that the panel begins with.
    QString scenario;
    /// Where the panel works: the transcript and the command files are there.
    QString directory;
    /// Where the tour saves its pictures; empty when there is no tour.
    QString tour;
    /// A bitstream file to be shown as chosen.
    QString bitstream;
    /// Why the file that was named as a bitstream cannot be shown as chosen.
    QString complaint;
};

} // namespace Kestoboard

#endif
