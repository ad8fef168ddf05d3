#include "app/SimulatedTool.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Kestoboard
{

namespace
{

const char scenarioVariable[] = "KESTOBOARD_SCENARIO";
const char pathVariable[] = "PATH";
const QLatin1String scenarioSuffix(".toml");

QString getFirstScenario()
{
    return QStringLiteral("one-board");
}

QString getBesideProgram(const char* path)
{
    return QDir::cleanPath(
        QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromUtf8(path)));
}

QDir getScenarioDirectory()
{
    return QDir(getBesideProgram(KESTOBOARD_DATA_FROM_BIN) + QStringLiteral("/scenarios"));
}

QByteArrayList getSearchPath()
{
    return qgetenv(pathVariable).split(':');
}

} // namespace

QString SimulatedTool::getDirectory()
{
    return getBesideProgram(KESTOBOARD_LIBEXEC_FROM_BIN);
}

bool SimulatedTool::exists()
{
    return QFileInfo(QDir(getDirectory()).filePath(QStringLiteral("ksbase2_cli"))).isExecutable();
}

QStringList SimulatedTool::getScenarioNames()
{
    QStringList names;
    const QFileInfoList files = getScenarioDirectory().entryInfoList(
        {QLatin1Char('*') + scenarioSuffix}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        names << file.completeBaseName();
    }
    return names;
}

QString SimulatedTool::getScenarioFile(const QString& name)
{
    if (getScenarioNames().contains(name)) {
        return getScenarioDirectory().filePath(name + scenarioSuffix);
    }
    return QFileInfo(name).isFile() ? name : QString();
}

void SimulatedTool::enable(const QString& scenario)
{
    if (!isEnabled()) {
        qputenv(pathVariable, QFile::encodeName(getDirectory()) + ':' + qgetenv(pathVariable));
    }
    if (!scenario.isEmpty()) {
        qputenv(scenarioVariable, QFile::encodeName(scenario));
    } else if (qEnvironmentVariableIsEmpty(scenarioVariable)) {
        qputenv(scenarioVariable, QFile::encodeName(getScenarioFile(getFirstScenario())));
    }
}

bool SimulatedTool::isEnabled()
{
    return getSearchPath().first() == QFile::encodeName(getDirectory());
}

} // namespace Kestoboard
