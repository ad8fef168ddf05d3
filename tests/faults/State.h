#ifndef FAULTS_STATE_H
#define FAULTS_STATE_H

#include <QString>
#include <QVector>

namespace Test
{

/// What the panel is doing at the moment when something goes wrong.
enum class State {
    Probing,      ///< the tool is looked for
    Starting,     ///< the tool has been started and nothing has been sent to it
    FirstListing, ///< the window is being made and waits for its first listing
    // A new board is brought up, at each of the steps.
    BringUpSelect,
    BringUpMode,
    BringUpClock,
    BringUpReset,
    BringUpRelease,
    BringUpRestore,
    Idle, ///< no command is there
    // A command of that kind is running.
    Listing,
    Mode,
    ForceBit,
    Monitor,
    SetMode,
    SetReset,
    SetClock,
    SetForceBit,
    Select,
    Flash,
    Load,
    ErrorHandler,
    Raw,
    // Something in the window has been used, which has a command running.
    Help,        ///< the Help button
    CommandFile, ///< the second of three lines of a command file
    Capture,     ///< the Capture button of the Scope page
    Nested,      ///< three waits stand on each other
    Closing      ///< the engine is being destroyed
};

struct StateForm {
    State state;
    QString title;
    /// What the tool is asked in the state; empty when it is asked nothing.
    QString command;
};

const QVector<StateForm>& getStates();
const StateForm& getForm(State state);
/// A board is being brought up.
bool isBringUp(State state);
/// What is thrown in the state ends on the console, and not with the caller.
bool isGuarded(State state);
/// The states in which an operation of the engine waits for the tool, the window being there.
QVector<State> getWaitingStates();

} // namespace Test

#endif
