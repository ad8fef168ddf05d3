#include "app/CommandLine.h"

#include "app/BitstreamPath.h"
#include "app/SimulatedTool.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Kestoboard
{

namespace
{

const char simulatePrefix[] = "--simulate=";

const QCommandLineOption& debugOption()
{
    static const QCommandLineOption option(
        QStringLiteral("debug"),
        CommandLine::tr(
            "Show the command row: a field for raw commands, the help of the tool, and a button "
            "that runs command files."));
    return option;
}

QString getSimulateDescription()
{
    return CommandLine::tr(
               "Drive simulated boards instead of real ones. SCENARIO may follow, after a blank or "
               "\"=\": a file whose name ends with \".toml\", or the name of one that comes with "
               "the "
               "panel (%1).")
        .arg(SimulatedTool::getScenarioNames().join(QStringLiteral(", ")));
}

const QCommandLineOption& simulateOption()
{
    static const QCommandLineOption option(QStringLiteral("simulate"), getSimulateDescription());
    return option;
}

/// The same for the help alone, where the argument is to be seen.
const QCommandLineOption& shownSimulateOption()
{
    static const QCommandLineOption option(QStringLiteral("simulate"), getSimulateDescription(),
                                           QStringLiteral("SCENARIO"));
    return option;
}

const QCommandLineOption& helpOption()
{
    static const QCommandLineOption option({QStringLiteral("h"), QStringLiteral("help")},
                                           CommandLine::tr("Print this text and end."));
    return option;
}

const QCommandLineOption& versionOption()
{
    static const QCommandLineOption option({QStringLiteral("v"), QStringLiteral("version")},
                                           CommandLine::tr("Print the version and end."));
    return option;
}

/// What the argument after --simulate becomes: the parser knows no option with an optional value.
const QCommandLineOption& scenarioOption()
{
    static const QCommandLineOption option = [] {
        QCommandLineOption hidden(QStringLiteral("scenario"), {}, QStringLiteral("SCENARIO"));
        hidden.setFlags(QCommandLineOption::HiddenFromHelp);
        return hidden;
    }();
    return option;
}

const QCommandLineOption& directoryOption()
{
    static const QCommandLineOption option(
        QStringLiteral("directory"),
        CommandLine::tr("Work in DIR, where the transcript is written and command files are looked "
                        "for, instead "
                        "of the current directory."),
        QStringLiteral("DIR"));
    return option;
}

const QCommandLineOption& tourOption()
{
    static const QCommandLineOption option(
        QStringLiteral("tour"),
        CommandLine::tr(
            "Visit every page on simulated boards, load a bitstream, save a picture of each page "
            "in "
            "DIR, print the console to standard output, and end. Works in DIR unless --directory "
            "says otherwise. Needs no display."),
        QStringLiteral("DIR"));
    return option;
}

bool isScenario(const QString& argument)
{
    return argument.endsWith(QLatin1String(".toml")) ||
           SimulatedTool::getScenarioNames().contains(argument);
}

/// Whether the argument is a plain word that no file bears: the name of a scenario, misspelt.
bool isUnknownWord(const QString& argument)
{
    return !argument.isEmpty() && !argument.startsWith(QLatin1Char('-')) &&
           !argument.contains(QLatin1Char('.')) && !argument.contains(QLatin1Char('/')) &&
           !QFileInfo::exists(argument);
}

/// Gives --simulate and its optional argument the form that the parser knows.
QStringList separateScenario(const QStringList& arguments)
{
    QStringList separated;
    bool isAfterSimulate = false;
    for (const QString& argument : arguments) {
        if (argument.startsWith(QLatin1String(simulatePrefix))) {
            separated << QStringLiteral("--simulate") << QStringLiteral("--scenario")
                      << argument.mid(static_cast<int>(qstrlen(simulatePrefix)));
        } else if (isAfterSimulate && (isScenario(argument) || isUnknownWord(argument))) {
            separated << QStringLiteral("--scenario") << argument;
        } else {
            separated << argument;
        }
        isAfterSimulate = argument == QLatin1String("--simulate");
    }
    return separated;
}

void setUp(QCommandLineParser* parser, const QCommandLineOption& simulate)
{
    parser->setApplicationDescription(CommandLine::tr("Control panel of FPGA development boards."));
    parser->addOptions({debugOption(), simulate, scenarioOption(), directoryOption(), tourOption(),
                        versionOption(), helpOption()});
    parser->addPositionalArgument(
        QStringLiteral("bitstream"),
        CommandLine::tr(
            "A bitstream file to show as chosen on the Bitstream page. It is not loaded."),
        QStringLiteral("[BITSTREAM]"));
}

QString getHelp()
{
    QCommandLineParser parser;
    setUp(&parser, shownSimulateOption());
    return parser.helpText().replace(QLatin1String("<SCENARIO>"), QLatin1String("[SCENARIO]"));
}

QString getAbsolutePath(const QString& path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

CommandLine::CommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    setUp(&parser, simulateOption());
    const bool isUnderstood = parser.parse(separateScenario(arguments));
    // Whoever asks for help gets it, whatever else stands there.
    if (parser.isSet(helpOption())) {
        action = Action::ShowHelp;
        text = getHelp();
    } else if (parser.isSet(versionOption())) {
        action = Action::ShowVersion;
        text = tr("Kestoboard %1").arg(QCoreApplication::applicationVersion()) + QLatin1Char('\n');
    } else if (!isUnderstood) {
        refuse(tr("%1 The option --help shows what can be asked for.").arg(parser.errorText()));
    } else {
        readOptions(parser);
    }
}

void CommandLine::refuse(const QString& sentence)
{
    // The first reason is enough.
    if (action != Action::Refuse) {
        action = Action::Refuse;
        text = sentence;
    }
}

void CommandLine::readOptions(const QCommandLineParser& parser)
{
    options.isDebug = parser.isSet(debugOption());
    options.isSimulating = parser.isSet(simulateOption());
    if (parser.isSet(scenarioOption())) {
        options.isSimulating = true;
        readScenario(parser.value(scenarioOption()));
    }
    if (parser.isSet(directoryOption())) {
        readDirectory(parser.value(directoryOption()));
    }
    if (parser.isSet(tourOption())) {
        options.tour = getAbsolutePath(parser.value(tourOption()));
        if (options.tour.isEmpty()) {
            refuse(tr("The option --tour needs the directory for its pictures."));
        }
    }
    readBitstream(parser.positionalArguments());
}

void CommandLine::readScenario(const QString& name)
{
    options.scenario = getAbsolutePath(SimulatedTool::getScenarioFile(name));
    if (options.scenario.isEmpty()) {
        refuse(tr("There is no scenario \"%1\": name a file, or one of %2.")
                   .arg(name, SimulatedTool::getScenarioNames().join(QStringLiteral(", "))));
    }
}

void CommandLine::readDirectory(const QString& path)
{
    options.directory = getAbsolutePath(path);
    if (!QFileInfo(options.directory).isDir()) {
        refuse(
            tr("There is no directory \"%1\" to work in: make it, or name another one.").arg(path));
    }
}

void CommandLine::readBitstream(const QStringList& paths)
{
    if (paths.isEmpty()) {
        return;
    }
    if (paths.size() > 1) {
        refuse(tr("Only one bitstream file can be shown as chosen, and %1 are named.")
                   .arg(paths.size()));
    }
    options.bitstream = getAbsolutePath(paths.first());
    const QString complaint = getBitstreamComplaint(options.bitstream);
    if (complaint.isEmpty()) {
        return;
    }
    if (QFileInfo(options.bitstream).isFile() && options.tour.isEmpty()) {
        // As the desktop hands it over: who opens a file there sees no terminal.
        options.bitstream.clear();
        options.complaint = complaint;
    } else {
        refuse(complaint);
    }
}

} // namespace Kestoboard
