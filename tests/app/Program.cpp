#include "Program.h"

#include <QSettings>

#include <csignal>

namespace Test
{

namespace
{

const int longestRun = 120'000;

} // namespace

Program::Program()
    : environment(QProcessEnvironment::systemEnvironment())
    , path(getPanelPath())
{
    setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    setVariable(QStringLiteral("XDG_CONFIG_HOME"), directory.filePath(QStringLiteral("config")));
    setVariable(QStringLiteral("XDG_STATE_HOME"), directory.filePath(QStringLiteral("state")));
    setVariable(QStringLiteral("XDG_RUNTIME_DIR"), directory.path());
    removeVariable(QStringLiteral("DISPLAY"));
    removeVariable(QStringLiteral("WAYLAND_DISPLAY"));
}

Program::~Program()
{
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
    }
}

QString Program::getActorPath()
{
    return QStringLiteral(KESTOBOARD_ACTOR);
}

QString Program::getPanelPath()
{
    return QStringLiteral(KESTOBOARD_PROGRAM);
}

void Program::start(const QStringList& arguments)
{
    process.setProcessEnvironment(environment);
    process.start(path, arguments, QIODevice::ReadWrite);
    process.waitForStarted();
}

bool Program::waitForEnd()
{
    return process.waitForFinished(longestRun);
}

bool Program::run(const QStringList& arguments)
{
    start(arguments);
    return waitForEnd();
}

void Program::signal(int number) const
{
    ::kill(static_cast<pid_t>(process.processId()), number);
}

int Program::getStatus() const
{
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QString Program::getOutput()
{
    output += process.readAllStandardOutput();
    return QString::fromUtf8(output);
}

QString Program::getErrors()
{
    errors += process.readAllStandardError();
    return QString::fromUtf8(errors);
}

QString Program::getSettingsFile() const
{
    return directory.filePath(QStringLiteral("config/Kestoboard/kestoboard.conf"));
}

QVariant Program::getSetting(const QString& key) const
{
    return QSettings(getSettingsFile(), QSettings::IniFormat).value(key);
}

void Program::setSetting(const QString& key, const QVariant& value) const
{
    QSettings(getSettingsFile(), QSettings::IniFormat).setValue(key, value);
}

} // namespace Test
