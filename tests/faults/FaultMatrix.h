#ifndef FAULTS_FAULTMATRIX_H
#define FAULTS_FAULTMATRIX_H

#include "State.h"

#include <QString>
#include <QVector>

namespace Test
{

/// What goes wrong with the tool.
enum class Fault {
    Late,
    Never,
    Refused,
    Split,
    Nul,
    NulAhead,
    Before,
    Between,
    After,
    Large,
    Output,
    Garbage,
    Exit,
    Signal,
    EndAtStart,
    CannotStart,
    CloseInput,
    CloseErrors
};

/// What the panel makes of a fault in a state.
enum class Outcome {
    NotMet,    ///< the fault and the state cannot meet
    Usual,     ///< as if nothing were wrong
    Patient,   ///< as if nothing were wrong, as soon as the tool goes on
    Told,      ///< the failure is told and nothing else changes
    Passed,    ///< what came first is passed on as the answer
    Forgotten, ///< no board is known until the next listing names it
    Thrown,    ///< the reply is reported as one that must not be
    Waits,     ///< the wait goes on and the window lives
    Aside,     ///< in the transcript only; what is asked next is answered as usual
    NoTool,    ///< the tool counts as missing: no window is made
    Blocked,   ///< nothing goes on, the window neither, until the search ends
    Ends,      ///< the last words stand on the console, and the process ends with status 1
    EndsNext,  ///< as usual; what is asked next ends the process like that
    Left,      ///< the tool comes to its own end and the engine goes without a word
    Killed     ///< the tool is killed after three seconds and the engine goes without a word
};

struct FaultForm {
    Fault fault;
    QString title;
    QString meaning;
    /// The trouble of a scenario that is this fault, with a place for a size where it has one;
    /// empty when the simulated tool cannot show it.
    QString trouble;
    /// The outcomes in the order of the states, a letter each.
    QString outcomes;
};

/// A fault in a state that can meet it.
struct Cell {
    Fault fault;
    State state;
    Outcome outcome;
    QString title;
};

/// Which outcome each fault has in each state.
namespace FaultMatrix
{

const QVector<FaultForm>& getFaults();
const FaultForm& getForm(Fault fault);
Outcome getOutcome(Fault fault, State state);
/// The trouble of a scenario that is the fault, as large as the state takes it.
QString getTrouble(Fault fault, State state);
/// The size of a very large answer, in bytes.
int getLargeSize(State state);
/// The cells, fault by fault, but for those that cannot be.
QVector<Cell> getCells();
/// The matrix as a page of the documents.
QString getPage();

} // namespace FaultMatrix

} // namespace Test

#endif
