#ifndef TESTS_SIMULATOR_SIMULATED_TOOL_H
#define TESTS_SIMULATOR_SIMULATED_TOOL_H

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A run of the simulated tool with a scenario, a journal and a state folder of its own.
class SimulatedTool
{
public:
    SimulatedTool();
    /// Ends the tool if it is still running.
    ~SimulatedTool();

    /// Replaces the scenario in one step. The journal, the state folder and a time scale of 0 are
    /// set above `text`, which begins with further keys or with a table.
    void setScenario(const QByteArray& text);
    /// The same without anything above `text`.
    void setWholeScenario(const QByteArray& text);
    /// The tool runs without a scenario.
    void useNoScenario();

    void start();

    /// Sends `line` and gives everything up to the end of the answer.
    QByteArray ask(const QByteArray& line);
    /// Sends `bytes` as they are and waits for nothing.
    void send(const QByteArray& bytes);
    /// What stands on standard error up to the next end mark and its line end.
    QByteArray takeAnswer();
    /// What stands on standard error up to and with `end`.
    QByteArray takeThrough(const QByteArray& end);
    /// Ends the input and gives what the tool still said on standard error.
    QByteArray finish();
    /// Waits for the end and gives what the tool said until then on standard error.
    QByteArray waitForEnd();

    /// All lines that the journal holds, each with its line end.
    QByteArray getJournal() const;
    /// A path in the temporary folder of this run.
    QString getPath(const QString& name) const;
    /// Writes a file into that folder and gives its path as the tool gets it.
    QByteArray makeFile(const QString& name, const QByteArray& contents) const;

    QProcess process;

private:
    void writeScenario(const QByteArray& text) const;

    QTemporaryDir directory;
    QByteArray unread;
};

/// The lines that begin a scenario with one selected board; keys of the board can follow.
QByteArray getOneBoard();

#endif
