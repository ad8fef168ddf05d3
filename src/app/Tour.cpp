#include "app/Tour.h"

#include "app/ChosenBitstream.h"
#include "app/ConsolePrinter.h"
#include "app/PanelApplication.h"
#include "app/SimulatedTool.h"
#include "app/StartFailure.h"
#include "app/TourStates.h"
#include "app/WindowFurniture.h"

#include <Board/BitstreamLeaf.h>
#include <Board/Folio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <Board/MonitoringLeaf.h>
#include <foundation/Debug.h>
#include <foundation/Exception.h>
#include <foundation/Theme.h>

#include <QCoreApplication>
#include <QFile>
#include <QPixmap>
#include <QPushButton>
#include <QSaveFile>
#include <QSettings>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace Kestoboard
{

namespace
{

using namespace std::chrono_literals;

/// Far above what a tour takes on a slow machine.
const std::chrono::minutes longestTour = 5min;
const std::chrono::milliseconds glance = 20ms;
const QSize windowSize(1024, 768);
const int bitstreamSize = 96 * 1024;

[[noreturn]] void fail(const QString& sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

/// A heading between the lines of the console.
void tell(const QString& sentence)
{
    std::printf("-- %s\n", getTerminalText(sentence).constData());
    std::fflush(stdout);
}

void writeFile(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.commit()) {
        fail(Tour::tr("The file %1 cannot be written: %2.").arg(path, file.errorString()));
    }
}

/// Debug mode has a button for command files where there is one.
void provideCommandFile()
{
    const QDir here;
    if (here.entryList({QStringLiteral("*.cmd")}).isEmpty()) {
        writeFile(here.filePath(QStringLiteral("example.cmd")),
                  "# Reads what the selected board tells of itself.\n"
                  "board get mode\n"
                  "board get force_bit\n");
    }
}

QByteArray makeBitstream()
{
    QByteArray bytes(bitstreamSize, '\0');
    for (int index = 0; index < bytes.size(); ++index) {
        // Any pattern does; this one does not compress to nothing.
        bytes[index] = static_cast<char>((index ^ (index >> 7)) & 0xff);
    }
    return bytes;
}

/// A window of the tour with all that the application adds to it, shown. It is ended as the panel
/// ends its own, and its engine after it.
class ShownWindow
{
public:
    ShownWindow(SchemeChoice* schemes, Shutdown* shutdown)
        : window(new Board::MainWindow)
        , furniture(window.get(), schemes, shutdown)
    {
        window->resize(windowSize);
        window->show();
        window->activateWindow();
    }

    Board::MainWindow* get() const { return window.get(); }

private:
    struct End {
        void operator()(Board::MainWindow* ended) const
        {
            Board::KSBaseHandler* const engine = ended->getKSBaseHandler();
            delete ended;
            engine->destroy();
        }
    };

    const std::unique_ptr<Board::MainWindow, End> window;
    const WindowFurniture furniture;
};

} // namespace

Tour::Tour(const Options& wanted)
    : options(wanted)
    , pictures(wanted.tour)
{
    watchdog.setSingleShot(true);
    connect(&watchdog, &QTimer::timeout, this, &Tour::giveUp);
}

Tour::~Tour() = default;

int Tour::run()
{
    try {
        prepare();
        watchdog.start(longestTour);
        for (const TourVariant& variant : TourVariant::getAll()) {
            visit(variant);
        }
        for (const auto scheme : {Orvex::Theme::Scheme::Light, Orvex::Theme::Scheme::Dark}) {
            visitStates({true, false, scheme});
        }
        return EXIT_SUCCESS;
    } catch (const Orvex::Exception&) {
        StartFailure::fromCurrentException().tell();
    } catch (const std::exception& failure) {
        writeToStandardError(QString::fromUtf8(failure.what()));
    }
    return EXIT_FAILURE;
}

void Tour::prepare()
{
    if (!QDir().mkpath(pictures.path())) {
        fail(tr("The directory %1 for the pictures cannot be made: name another one.")
                 .arg(pictures.path()));
    }
    if (!settings.isValid()) {
        fail(tr("No temporary directory can be made: %1.").arg(settings.errorString()));
    }
    if (!directory.enter(options.directory.isEmpty() ? pictures.path() : options.directory)) {
        fail(tr("The tour has no directory to work in."));
    }
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    writeFile(settings.filePath(QStringLiteral("no-board.toml")), "# A bench without boards.\n");
    bitstream = QDir::current().absoluteFilePath(QStringLiteral("blinker.ksb"));
    writeFile(bitstream, makeBitstream());
    provideCommandFile();
}

void Tour::visit(const TourVariant& variant)
{
    tell(tr("Visiting the panel %1").arg(variant.getDescription()));
    chooseScenario(variant);
    begin(variant);
    const ShownWindow window(&schemes, &shutdown);
    showChosenBitstream(*window.get(), bitstream);
    waitFor(tr("the choice of the bitstream"),
            [&] { return getChosenBitstream(*window.get()) == bitstream; });
    if (variant.hasBoards) {
        loadBitstream(window.get());
    }
    visitPages(window.get(), variant);
}

/// Another bench, on which things go wrong.
void Tour::visitStates(const TourVariant& variant)
{
    tell(tr("Visiting the states of the panel %1").arg(variant.getDescription()));
    const QString scenario = settings.filePath(QStringLiteral("states.toml"));
    writeFile(scenario, TourStates::getScenario());
    SimulatedTool::enable(scenario);
    QSettings().clear();
    begin(variant);
    const ShownWindow window(&schemes, &shutdown);
    TourStates states(
        window.get(), settings.path(),
        [this](const QString& what, const std::function<bool()>& isThere) {
            waitFor(what, isThere);
        },
        [this, &variant](const QPixmap& picture, const QString& name) {
            savePicture(picture, variant.getFileName(name));
        });
    states.visit(bitstream);
}

void Tour::begin(const TourVariant& variant)
{
    beginConsole();
    Orvex::setDebug(variant.isDebug);
    schemes.choose(variant.scheme == Orvex::Theme::Scheme::Dark ? SchemeChoice::Choice::Dark
                                                                : SchemeChoice::Choice::Light);
    awaited = tr("the first listing of the boards");
}

/// Each window shows what was said to it alone.
void Tour::beginConsole()
{
    printer.reset();
    if (auto* const application = qobject_cast<PanelApplication*>(qApp)) {
        application->renewConsole();
    }
    printer = std::make_unique<ConsolePrinter>();
}

void Tour::chooseScenario(const TourVariant& variant)
{
    if (!variant.hasBoards) {
        SimulatedTool::enable(settings.filePath(QStringLiteral("no-board.toml")));
    } else if (!options.scenario.isEmpty()) {
        SimulatedTool::enable(options.scenario);
    } else {
        SimulatedTool::enable(SimulatedTool::getScenarioFile(QStringLiteral("three-boards")));
    }
}

void Tour::loadBitstream(Board::MainWindow* window)
{
    auto* const page = window->findChild<Board::BitstreamLeaf*>();
    QPushButton* load = nullptr;
    for (QPushButton* const button : page->findChildren<QPushButton*>()) {
        if (button->text() == QLatin1String("Load")) {
            load = button;
        }
    }
    if (load == nullptr || !load->isEnabled()) {
        fail(tr("The Bitstream page has no button to load with."));
    }
    const QString success = QStringLiteral("Bitstream successfully sent");
    const QString failure = QStringLiteral("Bitstream failed");
    // Pressed from the event loop, as a person does.
    QMetaObject::invokeMethod(load, "click", Qt::QueuedConnection);
    waitFor(tr("the verdict on the load"),
            [&] { return printer->hasSeen(success) || printer->hasSeen(failure); });
    if (!printer->hasSeen(success)) {
        fail(tr("The board tool did not take the bitstream %1.").arg(bitstream));
    }
}

void Tour::visitPages(Board::MainWindow* window, const TourVariant& variant)
{
    const Board::Folio& folio = *window->getFolio();
    visitPage(window, variant, QStringLiteral("bitstream"), folio.getBitstreamIndex());
    visitPage(window, variant, QStringLiteral("basic"), folio.getBasicIndex());
    visitPage(window, variant, QStringLiteral("monitoring"), folio.getMonitoringIndex());
    visitPage(window, variant, QStringLiteral("scope"), folio.getScopeIndex());
}

void Tour::visitPage(Board::MainWindow* window, const TourVariant& variant, const QString& name,
                     long index)
{
    Board::Folio* const folio = window->getFolio();
    if (index < 0) {
        fail(tr("The panel has no page \"%1\".").arg(name));
    }
    folio->raiseLeaf(static_cast<unsigned long>(index));
    const auto* const monitoring = window->findChild<Board::MonitoringLeaf*>();
    const Board::KSBaseHandler& engine = *window->getKSBaseHandler();
    waitFor(tr("the page \"%1\" to fill").arg(name), [&] {
        return folio->getCurrentIndex() == index && engine.getCommandHandlers().isEmpty() &&
               variant.hasBoards != monitoring->getMonitoringChannels().isEmpty();
    });
    savePicture(window->grab(), variant.getFileName(name));
}

void Tour::savePicture(const QPixmap& picture, const QString& fileName)
{
    const QString path = pictures.absoluteFilePath(fileName);
    if (!picture.save(path, "PNG")) {
        fail(tr("The picture %1 cannot be written.").arg(path));
    }
}

/// Serves events until the condition holds. The watchdog sees to it that this has an end.
void Tour::waitFor(const QString& what, const std::function<bool()>& isThere)
{
    awaited = what;
    QTimer ticker;
    ticker.start(glance);
    // What has been asked for is on its way as an event: it is served at least once.
    do {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    } while (!isThere());
}

void Tour::giveUp()
{
    writeToStandardError(tr("The tour ends early: it waited in vain for %1.").arg(awaited));
    endProcess(EXIT_FAILURE);
}

} // namespace Kestoboard
