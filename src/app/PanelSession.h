#ifndef APP_PANELSESSION_H
#define APP_PANELSESSION_H

#include "app/Options.h"
#include "app/SchemeChoice.h"
#include "app/Shutdown.h"
#include "app/SignalNotifier.h"
#include "app/ToolWatch.h"
#include "app/WorkingDirectory.h"

#include <QObject>

#include <memory>

namespace Board
{
class KSBaseHandler;
class MainWindow;
} // namespace Board

namespace Kestoboard
{

class WindowFurniture;

/// One run of the panel, from the directory it works in to the end of its window. Needs the
/// PanelApplication.
class PanelSession : public QObject
{
    Q_OBJECT

public:
    explicit PanelSession(const Options& wanted);
    ~PanelSession() override;

    /// Shows the panel until the person leaves. Returns the exit status; what went wrong has been
    /// told.
    int run();

private:
    bool makeWindow();
    std::unique_ptr<Board::MainWindow> tryToMakeWindow();
    void furnishWindow();
    void endWindow();
    void onToolEnded();

    const Options options;
    WorkingDirectory directory;
    Shutdown shutdown;
    SignalNotifier signalNotifier;
    ToolWatch toolWatch;
    SchemeChoice schemes;
    std::unique_ptr<Board::MainWindow> window;
    std::unique_ptr<WindowFurniture> furniture;
};

} // namespace Kestoboard

#endif
