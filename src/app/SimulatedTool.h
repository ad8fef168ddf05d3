#ifndef APP_SIMULATEDTOOL_H
#define APP_SIMULATEDTOOL_H

#include <QString>
#include <QStringList>

namespace Kestoboard
{

/// The simulated board tool and its scenarios, which lie beside the program where it was built as
/// well as where it is installed. Needs a QCoreApplication.
class SimulatedTool
{
public:
    /// The directory of the simulated `ksbase2_cli`; it is in no search path by itself.
    static QString getDirectory();
    static bool exists();

    /// The names of the scenarios that come with the panel, without their suffix.
    static QStringList getScenarioNames();
    /// The file of a scenario given by its path or by the name of one that comes with the panel;
    /// empty when there is none.
    static QString getScenarioFile(const QString& name);

    /// Makes the simulated tool the one that every later search finds, and gives it a scenario: an
    /// empty one leaves what the environment says, or else is the one that the panel begins with.
    static void enable(const QString& scenario);
    static bool isEnabled();
};

} // namespace Kestoboard

#endif
