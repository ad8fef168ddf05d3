#include "app/PanelSession.h"

#include "app/ChosenBitstream.h"
#include "app/LastWords.h"
#include "app/PanelApplication.h"
#include "app/RecentLoads.h"
#include "app/SettingsCheck.h"
#include "app/SimulatedTool.h"
#include "app/StartFailure.h"
#include "app/StartupWait.h"
#include "app/WindowFurniture.h"

#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <foundation/Console.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSessionManager>
#include <QSettings>
#include <QTimer>

#include <cstdlib>

namespace Kestoboard
{

namespace
{

void warnOfLostSettings()
{
    const QSettings settings;
    if (!settings.isWritable()) {
        const QString sentence =
            QCoreApplication::translate("Kestoboard::PanelSession",
                                        "Settings cannot be kept: the file %1 cannot be written")
                .arg(QDir::toNativeSeparators(settings.fileName()));
        Orvex::console->warning(sentence.toUtf8().constData(), "");
    }
}

/// On the console for who opened the file on the desktop, and on the terminal for who named it
/// there.
void complain(const QString& sentence)
{
    Orvex::console->error(sentence.toUtf8().constData(), "");
    writeToStandardError(sentence);
}

} // namespace

PanelSession::PanelSession(const Options& wanted)
    : options(wanted)
    , shutdown(this)
{
    connect(&signalNotifier, &SignalNotifier::received, &shutdown, &Shutdown::request);
    connect(&shutdown, &Shutdown::ending, this, [this] { directory.leave(); });
    connect(&toolWatch, &ToolWatch::toolEnded, this, &PanelSession::onToolEnded);
    connect(
        qApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager& manager) {
            shutdown.prepareSessionEnd({[&manager] { return manager.allowsInteraction(); },
                                        [&manager] { manager.cancel(); }});
        },
        Qt::DirectConnection);
    if (auto* const application = qobject_cast<PanelApplication*>(qApp)) {
        connect(application, &PanelApplication::endRequested, &shutdown, &Shutdown::request);
    }
}

PanelSession::~PanelSession() = default;

int PanelSession::run()
{
    // First, as only who reads a file first is told that it cannot be understood.
    for (const QString& sentence : checkSettings()) {
        Orvex::console->warning(sentence.toUtf8().constData(), "");
    }
    if (options.isSimulating) {
        SimulatedTool::enable(options.scenario);
    }
    schemes.prepare();
    if (!directory.enter(options.directory)) {
        return EXIT_FAILURE;
    }
    if (!directory.getChosen().isEmpty()) {
        LastWords::setDirectory(QFile::encodeName(directory.getChosen()).toStdString());
    }
    if (!makeWindow()) {
        return EXIT_FAILURE;
    }
    furnishWindow();
    window->show();
    const int status = QCoreApplication::exec();
    endWindow();
    return status;
}

/// Makes the window, on simulated boards when the person prefers them to none.
bool PanelSession::makeWindow()
{
    for (;;) {
        try {
            window = tryToMakeWindow();
            return true;
        } catch (...) {
            if (StartFailure::fromCurrentException().tell() == StartFailure::Choice::Quit) {
                return false;
            }
        }
        SimulatedTool::enable({});
    }
}

std::unique_ptr<Board::MainWindow> PanelSession::tryToMakeWindow()
{
    StartupWait wait;
    connect(&wait, &StartupWait::quitRequested, &shutdown, &Shutdown::request);
    refuseRecentLoads();
    // The constructor serves events while it waits for the first listing: the first of them.
    QTimer::singleShot(0, &toolWatch, &ToolWatch::begin);
    return std::make_unique<Board::MainWindow>();
}

void PanelSession::furnishWindow()
{
    shutdown.watch(window.get());
    toolWatch.begin();
    furniture = std::make_unique<WindowFurniture>(window.get(), &schemes, &shutdown);
    warnOfLostSettings();
    connect(&shutdown, &Shutdown::saving, this, [this] { furniture->getState().save(); });
    if (!options.bitstream.isEmpty()) {
        showChosenBitstream(*window, options.bitstream);
    }
    if (!options.complaint.isEmpty()) {
        complain(options.complaint);
    }
}

void PanelSession::endWindow()
{
    toolWatch.disconnect(this);
    shutdown.disconnect(this);
    Board::KSBaseHandler* const engine = window->getKSBaseHandler();
    furniture.reset();
    window.reset();
    engine->destroy();
    directory.leave();
}

void PanelSession::onToolEnded()
{
    if (SignalNotifier::hasReceived()) {
        // An interrupt from the terminal reaches the tool as well, which then may end first.
        shutdown.endNow();
    }
    QStringList sentences(toolWatch.getVerdict());
    if (furniture) {
        sentences += furniture->getUnfinished();
    }
    sentences.removeAll({});
    LastWords::setReason(sentences.join(QLatin1Char('\n')).toStdString());
    shutdown.save();
    directory.leave();
}

} // namespace Kestoboard
