#ifndef APP_STARTFAILURE_H
#define APP_STARTFAILURE_H

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

class QMessageBox;

namespace Kestoboard
{

/// Why no window could be made, told to a person.
class StartFailure
{
    Q_DECLARE_TR_FUNCTIONS(Kestoboard::StartFailure)

public:
    enum class Choice { Quit, Simulate };

    /// Reads the exception that is being handled; inside a catch block only.
    static StartFailure fromCurrentException();
    StartFailure(const QString& whatIsWrong, const QString& whatToDo, bool isSimulationOffered);

    const QString& getSentence() const { return sentence; }
    const QString& getAdvice() const { return advice; }
    /// Simulated boards would do.
    bool canSimulate() const { return offersSimulation; }

    /// Shows a box, or writes to standard error when there is no display, and returns what the
    /// person wants.
    Choice tell() const;

    /// The box, not shown yet; the caller owns it.
    QMessageBox* makeBox() const;

    /// What is told when there is no board tool.
    static StartFailure getToolMissing();

private:
    QString sentence;
    QString advice;
    bool offersSimulation;
};

/// Text for the terminal that the program was started in. Nothing in it acts on the terminal.
QByteArray getTerminalText(const QString& text);

/// Writes a sentence for whoever started the program in a terminal.
void writeToStandardError(const QString& text);

} // namespace Kestoboard

#endif
