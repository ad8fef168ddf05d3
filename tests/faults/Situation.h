#ifndef FAULTS_SITUATION_H
#define FAULTS_SITUATION_H

#include "State.h"

#include <QString>
#include <QStringList>

namespace Board
{
class KSBaseHandler;
} // namespace Board

namespace Test
{

class Bench;

/// Has a panel do what a state is named for, on a bench with the selected board "Aurora".
class Situation
{
public:
    /// The bench outlives the situation. Without one, in a process that another one has prepared a
    /// bench for, only `approach` and `perform` may be called.
    Situation(Bench* bench, State state);

    /// Puts the bench into order for the state: a window that is made then stands before it. The
    /// trouble is that of a scenario for the command of the state, such as `kind = "never"`;
    /// several are joined by a bar.
    void prepare(const QString& trouble) const;
    /// Lays the trouble ready for a panel that stands.
    void arm(const QString& trouble) const;
    /// Has the engine come to the moment before the state.
    void approach(Board::KSBaseHandler* engine) const;
    /// Does what the state is named for, to its end. Returns what came of it besides the console:
    /// what was read, and what was thrown.
    QStringList perform(Board::KSBaseHandler* engine) const;

    /// Lets the tool go on where the state itself keeps it from that.
    void letGo() const;

    /// The command of the state has reached the tool since the approach.
    bool isAsked() const;

private:
    QString getScenario(const QString& trouble, bool hasNewBoard, int skip) const;
    QStringList operate(Board::KSBaseHandler* engine) const;

    Bench* const bench;
    const State state;
    mutable int journalStart;
};

} // namespace Test

#endif
