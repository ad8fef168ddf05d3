#include "SimulatedTool.h"

#include <QFile>
#include <QProcessEnvironment>
#include <QSaveFile>

namespace
{

// Only ends a hanging test; no answer of a healthy tool takes nearly as long.
constexpr int longestWaitMs = 60000;

int getEndOf(const QByteArray& text, const QByteArray& end)
{
    const int position = text.indexOf(end);
    return position < 0 ? -1 : position + end.size();
}

} // namespace

SimulatedTool::SimulatedTool()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KESTOBOARD_SCENARIO"),
                       getPath(QStringLiteral("scenario.toml")));
    environment.insert(QStringLiteral("XDG_STATE_HOME"), getPath(QStringLiteral("home")));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(directory.path());
    process.setProgram(QStringLiteral(SIMULATED_TOOL));
    process.setArguments({QStringLiteral("-s"), QStringLiteral("-x")});
}

SimulatedTool::~SimulatedTool()
{
    process.kill();
    process.waitForFinished(longestWaitMs);
}

void SimulatedTool::setScenario(const QByteArray& text)
{
    writeScenario("journal = 'journal.txt'\nstate = 'state'\ntime_scale = 0\n" + text);
}

void SimulatedTool::setWholeScenario(const QByteArray& text)
{
    writeScenario(text);
}

void SimulatedTool::useNoScenario()
{
    QProcessEnvironment environment = process.processEnvironment();
    environment.remove(QStringLiteral("KESTOBOARD_SCENARIO"));
    process.setProcessEnvironment(environment);
}

void SimulatedTool::start()
{
    process.start();
    process.waitForStarted(longestWaitMs);
}

QByteArray SimulatedTool::ask(const QByteArray& line)
{
    send(line + "\n");
    return takeAnswer();
}

void SimulatedTool::send(const QByteArray& bytes)
{
    process.write(bytes);
    while (process.bytesToWrite() > 0 && process.waitForBytesWritten(longestWaitMs)) {
    }
}

QByteArray SimulatedTool::takeAnswer()
{
    for (;;) {
        const int success = getEndOf(unread, "COMMAND SUCCEEDED\n");
        const int failure = getEndOf(unread, "COMMAND FAILED\n");
        const int end = success < 0 || (failure >= 0 && failure < success) ? failure : success;
        if (end >= 0) {
            QByteArray answer = unread.left(end);
            unread.remove(0, end);
            return answer;
        }
        process.setReadChannel(QProcess::StandardError);
        if (!process.waitForReadyRead(longestWaitMs)) {
            return "NO ANSWER AFTER: " + unread;
        }
        unread += process.readAllStandardError();
    }
}

QByteArray SimulatedTool::takeThrough(const QByteArray& end)
{
    process.setReadChannel(QProcess::StandardError);
    while (!unread.contains(end) && process.waitForReadyRead(longestWaitMs)) {
        unread += process.readAllStandardError();
    }
    const int size = getEndOf(unread, end);
    QByteArray text = unread.left(size);
    unread.remove(0, text.size());
    return text;
}

QByteArray SimulatedTool::finish()
{
    process.closeWriteChannel();
    return waitForEnd();
}

QByteArray SimulatedTool::waitForEnd()
{
    process.waitForFinished(longestWaitMs);
    return unread + process.readAllStandardError();
}

QByteArray SimulatedTool::getJournal() const
{
    QFile file(getPath(QStringLiteral("journal.txt")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("NO JOURNAL");
}

QString SimulatedTool::getPath(const QString& name) const
{
    return directory.filePath(name);
}

QByteArray SimulatedTool::makeFile(const QString& name, const QByteArray& contents) const
{
    QFile file(getPath(name));
    file.open(QIODevice::WriteOnly);
    file.write(contents);
    return QFile::encodeName(file.fileName());
}

void SimulatedTool::writeScenario(const QByteArray& text) const
{
    QSaveFile file(getPath(QStringLiteral("scenario.toml")));
    file.open(QIODevice::WriteOnly);
    file.write(text);
    file.commit();
}

QByteArray getOneBoard()
{
    return "[[board]]\nname = 'KS-Dev A'\nselected = true\n";
}
