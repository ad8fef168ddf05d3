#ifndef SUPPORT_BENCH_H
#define SUPPORT_BENCH_H

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Test
{

/// A simulated bench in a directory of its own: the simulated tool first on the search path, its
/// scenario, the journal of what reached it, and an empty working directory that is the current one
/// for as long as the bench lives.
class Bench
{
public:
    /// A bench without boards.
    Bench();
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    /// One board of that name in the scenario's language; more keys may follow.
    static QString board(const QString& name, const QString& moreKeys = {});
    /// A fault, such as fault("board list", "kind = \"never\"").
    static QString fault(const QString& command, const QString& keys);
    /// The whole reply, mark and all, that the tool gives to every command that begins so.
    static QString reply(const QString& command, const QString& text);
    /// A fault that keeps the answers to such commands back until `release`.
    QString hold(const QString& command) const;

    /// Replaces the scenario; the tool reads it at its start and at each listing.
    void setScenario(const QString& text);
    /// Lets the held answers go.
    void release();
    void holdAgain();

    /// The lines that the tool has received, oldest first.
    QStringList getJournal() const;
    QByteArray getJournalBytes() const;
    /// The journal's lines from the call before on.
    QStringList takeJournal();
    /// How often the tool has received exactly that line.
    int count(const QString& command) const;

    /// Puts a shell script first on the search path, in place of the simulated tool.
    void setTool(const QByteArray& script);
    /// Puts a shell script in place of the program that looks for the tool.
    void setSearch(const QByteArray& script);
    /// Takes every board tool off the search path.
    void removeTool();

    /// The path of a file in the working directory.
    QString getPath(const QString& name) const;
    /// Writes a file in the working directory and returns its path.
    QString writeFile(const QString& name, const QByteArray& content) const;
    QByteArray readFile(const QString& name) const;

    /// The directory of the simulated tool, to be put on a search path.
    static QString getToolDirectory();

private:
    /// Writes a program into the directory of that name. Returns the path of the directory.
    QByteArray writeProgram(const QString& place, const QString& name, const QByteArray& script);

    QTemporaryDir directory;
    const QString formerCurrentPath;
    const QByteArray formerSearchPath;
    int journalTaken;
};

} // namespace Test

#endif
