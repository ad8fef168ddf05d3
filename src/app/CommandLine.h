#ifndef APP_COMMANDLINE_H
#define APP_COMMANDLINE_H

#include "app/Options.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class QCommandLineParser;

namespace Kestoboard
{

/// Reads the command line. Needs a QCoreApplication, and no display.
class CommandLine
{
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::CommandLine)

public:
    enum class Action {
        Run,         ///< the options say how
        ShowHelp,    ///< the text is to be printed
        ShowVersion, ///< the text is to be printed
        Refuse       ///< the text says what is wrong
    };

    /// The first argument is the name of the program. Relative paths start at the current
    /// directory of this moment.
    explicit CommandLine(const QStringList& arguments);

    Action getAction() const { return action; }
    const Options& getOptions() const { return options; }
    /// What is to be printed: the help, the version or the refusal.
    const QString& getText() const { return text; }

private:
    void refuse(const QString& sentence);
    void readOptions(const QCommandLineParser& parser);
    void readScenario(const QString& name);
    void readDirectory(const QString& path);
    void readBitstream(const QStringList& paths);

    Action action = Action::Run;
    Options options;
    QString text;
};

} // namespace Kestoboard

#endif
