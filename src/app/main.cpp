#include "app/CommandLine.h"
#include "app/Display.h"
#include "app/KeptTranscript.h"
#include "app/LastWords.h"
#include "app/LastWordsDialog.h"
#include "app/PanelApplication.h"
#include "app/PanelSession.h"
#include "app/SchemeChoice.h"
#include "app/StartFailure.h"
#include "app/Tour.h"

#include <foundation/Debug.h>
#include <foundation/Descriptors.h>
#include <foundation/Encoding.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace
{

using Kestoboard::CommandLine;

/// More than the panel, its board tool and the libraries of the desktop have open at any time.
const int neededDescriptors = 64;

CommandLine readCommandLine(int& argc, char** argv)
{
    // An application without windows: help and version need no display.
    const QCoreApplication application(argc, argv);
    return CommandLine(QCoreApplication::arguments());
}

int print(const QString& text)
{
    std::fputs(Kestoboard::getTerminalText(text).constData(), stdout);
    return EXIT_SUCCESS;
}

int refuse(const QString& sentence)
{
    Kestoboard::writeToStandardError(sentence);
    return EXIT_FAILURE;
}

std::unique_ptr<Kestoboard::PanelApplication> makeApplication(int& argc, char** argv)
{
    const Kestoboard::DisplayGuard guard;
    // Sharp icons on a dense screen; both have to be said before the application exists.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    return std::make_unique<Kestoboard::PanelApplication>(argc, argv);
}

std::vector<std::string> getArguments(int argc, char** argv)
{
    return {argv + 1, argv + argc};
}

bool isAskedToShowLastWords(int argc, char** argv)
{
    return argc > 1 && std::string(argv[1]) == Kestoboard::LastWords::showArgument;
}

int showLastWords(int& argc, char** argv)
{
    const std::unique_ptr<Kestoboard::PanelApplication> application = makeApplication(argc, argv);
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        return EXIT_FAILURE;
    }
    Kestoboard::SchemeChoice schemes;
    schemes.apply();
    QStringList arguments = QCoreApplication::arguments();
    arguments.removeAt(1);
    const CommandLine commandLine(arguments);
    const QString named = commandLine.getOptions().directory;
    const QString directory = named.isEmpty() ? QDir::currentPath() : named;
    const Kestoboard::KeptTranscript transcript(directory);
    Kestoboard::LastWordsDialog dialog(Orvex::getReadable(input.readAll().toStdString()),
                                       transcript.getName(),
                                       [&transcript] { return transcript.keep(); });
    arguments.removeFirst();
    QObject::connect(&dialog, &Kestoboard::LastWordsDialog::startAgainRequested, [&arguments] {
        QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
    });
    dialog.exec();
    return EXIT_SUCCESS;
}

int makeTour(int& argc, char** argv, const Kestoboard::Options& options)
{
    if (!Kestoboard::hasPlatform()) {
        Kestoboard::useNoDisplay();
    }
    const std::unique_ptr<Kestoboard::PanelApplication> application = makeApplication(argc, argv);
    const Kestoboard::LastWords lastWords;
    return Kestoboard::Tour(options).run();
}

int showPanel(int& argc, char** argv, const Kestoboard::Options& options)
{
    if (!Kestoboard::hasPlatform()) {
        return refuse(QCoreApplication::translate(
            "main", "There is no display to show a window on: start the panel in a desktop "
                    "session, or save pictures of its pages with --tour DIR."));
    }
    Orvex::setDebug(options.isDebug);
    const std::vector<std::string> arguments = getArguments(argc, argv);
    const std::unique_ptr<Kestoboard::PanelApplication> application = makeApplication(argc, argv);
    const Kestoboard::LastWords lastWords(arguments);
    return Kestoboard::PanelSession(options).run();
}

} // namespace

int main(int argc, char** argv)
{
    Kestoboard::PanelApplication::setNames();
    if (!Orvex::hasFreeDescriptors(neededDescriptors)) {
        return refuse(QCoreApplication::translate(
            "main", "The panel may open too few files: allow it more, with \"ulimit -n 1024\" in "
                    "the shell that starts it."));
    }
    if (isAskedToShowLastWords(argc, argv)) {
        return showLastWords(argc, argv);
    }
    const CommandLine commandLine = readCommandLine(argc, argv);
    switch (commandLine.getAction()) {
    case CommandLine::Action::ShowHelp:
    case CommandLine::Action::ShowVersion:
        return print(commandLine.getText());
    case CommandLine::Action::Refuse:
        return refuse(commandLine.getText());
    case CommandLine::Action::Run:
        break;
    }
    const Kestoboard::Options& options = commandLine.getOptions();
    return options.tour.isEmpty() ? showPanel(argc, argv, options) : makeTour(argc, argv, options);
}
