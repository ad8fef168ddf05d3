#ifndef FAULTS_SCRIPTS_H
#define FAULTS_SCRIPTS_H

#include <QByteArray>

/// Shell scripts in place of the tool, for what the simulated one cannot be told to do.
namespace Test::Scripts
{

/// Goes on until the panel has gone, which it outlives by a moment only.
QByteArray getStay();
/// Goes on until there is the file "go", or the panel has gone.
QByteArray getPause();
/// Looks for the tool, and tells so by the file "asked", but does not answer before there is "go".
QByteArray getLateSearch();
/// Answers every command with a mark until its input ends, and acts then.
QByteArray getTool(const QByteArray& lastAct = {});
/// The same, which also acts when the first user signal comes.
QByteArray getIdleTool(const QByteArray& act);
/// Acts, tells that by the file "done", and is the simulated tool from then on.
QByteArray getStartingTool(const QByteArray& act);

} // namespace Test::Scripts

#endif
