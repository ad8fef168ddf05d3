#ifndef APP_TOUR_H
#define APP_TOUR_H

#include "app/Options.h"
#include "app/SchemeChoice.h"
#include "app/Shutdown.h"
#include "app/TourVariant.h"
#include "app/WorkingDirectory.h"

#include <QDir>
#include <QObject>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>

namespace Board
{
class MainWindow;
} // namespace Board

namespace Kestoboard
{

class ConsolePrinter;

/// Visits every page of the panel on simulated boards, loads a bitstream, and saves a picture of
/// each page: with boards and without, in both modes, light and dark; then one of each dialog and
/// state, both light and dark. What the console says goes to standard output.
///
/// It uses the panel as a person does, waits for what it expects to see, and gives up with a
/// sentence when it does not come. Settings of the person are neither read nor changed.
class Tour : public QObject
{
    Q_OBJECT

public:
    explicit Tour(const Options& wanted);
    ~Tour() override;

    /// Returns the exit status; what went wrong has been told on standard error.
    int run();

private:
    void prepare();
    void visit(const TourVariant& variant);
    void visitStates(const TourVariant& variant);
    void begin(const TourVariant& variant);
    void beginConsole();
    void chooseScenario(const TourVariant& variant);
    void loadBitstream(Board::MainWindow* window);
    void visitPages(Board::MainWindow* window, const TourVariant& variant);
    void visitPage(Board::MainWindow* window, const TourVariant& variant, const QString& name,
                   long index);
    void savePicture(const QPixmap& picture, const QString& fileName);
    void waitFor(const QString& what, const std::function<bool()>& isThere);
    [[noreturn]] void giveUp();

    const Options options;
    const QDir pictures;
    QTemporaryDir settings;
    WorkingDirectory directory;
    std::unique_ptr<ConsolePrinter> printer;
    /// Nobody asks the tour to end; what is added to its windows needs somebody to ask.
    Shutdown shutdown;
    SchemeChoice schemes;
    QTimer watchdog;
    QString bitstream;
    /// What the tour is at, for the sentence of the watchdog.
    QString awaited;
};

} // namespace Kestoboard

#endif
