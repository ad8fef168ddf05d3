#ifndef APP_PROGRAM_H
#define APP_PROGRAM_H

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Test
{

/// The built program, or one that acts a part of it, run as a person runs it: in a process of its
/// own, without a display, with settings of its own that are empty at first.
class Program
{
public:
    /// The panel itself.
    Program();
    /// The program that does with the panel what its first argument says; see panel_actor.
    static QString getActorPath();
    static QString getPanelPath();
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void setPath(const QString& program) { path = program; }
    void setVariable(const QString& name, const QString& value) { environment.insert(name, value); }
    void removeVariable(const QString& name) { environment.remove(name); }

    /// Starts the program in the current directory.
    void start(const QStringList& arguments);
    /// Waits for the end of the program. False when it does not end.
    bool waitForEnd();
    /// Starts the program and waits for its end.
    bool run(const QStringList& arguments);

    void signal(int number) const;
    qint64 getId() const { return process.processId(); }
    bool isRunning() const { return process.state() == QProcess::Running; }
    /// The exit status; -1 when a signal ended the program.
    int getStatus() const;
    /// What the program has written so far.
    QString getOutput();
    QString getErrors();

    /// One value of the settings that the program has stored.
    QVariant getSetting(const QString& key) const;
    void setSetting(const QString& key, const QVariant& value) const;

private:
    QString getSettingsFile() const;

    QTemporaryDir directory;
    QProcess process;
    QProcessEnvironment environment;
    QString path;
    QByteArray output;
    QByteArray errors;
};

} // namespace Test

#endif
