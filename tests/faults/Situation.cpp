#include "Situation.h"

#include "Course.h"
#include "Stage.h"
#include "support/Bench.h"
#include "support/Panel.h"
#include "support/When.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>
#include <foundation/Encoding.h>
#include <foundation/Exception.h>

#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

namespace Test
{

namespace
{

using Board::KSBaseHandler;

/// In the working directory; there as soon as three waits stand on each other.
const QLatin1String nestedFile("nested");
/// In the working directory, the only one of its kind.
const QLatin1String commandFile("steps.cmd");

QString summarize(const std::string& reply)
{
    return getSummary(QString::fromStdString(reply));
}

bool isAnyQueued(const KSBaseHandler& engine, std::size_t count)
{
    return engine.getCommandHandlers().getCount() >= count;
}

/// A setting, in its wait a listing, and in the wait of that a reading. The setting is not answered
/// before all of them wait.
QStringList nest(KSBaseHandler* engine)
{
    QStringList results;
    QObject context;
    // The engine may be destroyed in one of the waits.
    const QPointer<KSBaseHandler> living(engine);
    when(
        &context, [living] { return living && living->isRunning(); },
        [engine, living, &context, &results] {
            when(
                &context, [living] { return living && isAnyQueued(*living, 3); },
                [] {
                    QFile file{QString(nestedFile)};
                    static_cast<void>(file.open(QIODevice::WriteOnly));
                });
            when(
                &context, [living] { return living && isAnyQueued(*living, 2); },
                [engine, &results] {
                    results += QStringLiteral("read: ") + summarize(engine->getMonitor(0));
                });
            engine->refreshTamsaMap();
            results += QStringLiteral("listed");
        });
    engine->setForceBit(false);
    return results;
}

template <class Button>
void press(const QWidget& window, const QString& name)
{
    for (Button* const button : window.findChildren<Button*>()) {
        if (button->text() == name) {
            button->click();
            return;
        }
    }
    qFatal("there is no button %s", qPrintable(name));
}

/// Uses what the window of the engine has for the state.
void useWindow(const KSBaseHandler& engine, State state)
{
    Board::MainWindow* const window = findWindow(&engine);
    if (state == State::Help) {
        press<QPushButton>(*window, QStringLiteral("Help"));
    } else if (state == State::CommandFile) {
        QMetaObject::invokeMethod(window, "refreshFileButton");
        press<QToolButton>(*window, commandFile);
    } else {
        window->findChild<QLineEdit*>(QStringLiteral("filenameLineEdit"))
            ->setText(QStringLiteral("trace.vcd"));
        press<QPushButton>(*window, QStringLiteral("Capture"));
    }
}

} // namespace

Situation::Situation(Bench* testBench, State wantedState)
    : bench(testBench)
    , state(wantedState)
    , journalStart(0)
{
}

QString Situation::getScenario(const QString& trouble, bool hasNewBoard, int skip) const
{
    QString scenario = Bench::board(QStringLiteral("Aurora"),
                                    QStringLiteral("selected = true\n[[board.channel]]\nname = "
                                                   "\"Core\"\nvalue = \"steady\""));
    if (hasNewBoard) {
        scenario += Bench::board(QStringLiteral("Borealis"));
    }
    if (state == State::Nested) {
        // Of the scenario's own folder, in which the working directory is.
        scenario +=
            Bench::fault(getForm(state).command,
                         QStringLiteral("kind = \"hold\"\nfile = \"work/%1\"").arg(nestedFile));
    }
    for (const QString& keys : trouble.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        scenario += Bench::fault(getForm(state).command,
                                 QStringLiteral("skip = %1\n%2").arg(skip).arg(keys));
    }
    return scenario;
}

void Situation::prepare(const QString& trouble) const
{
    bench->writeFile(QStringLiteral("design.ksb"), QByteArray(4096, 'k'));
    bench->writeFile(commandFile, "board get mode\nboard get force_bit\nboard set force_bit off\n");
    bench->setScenario(getScenario(state == State::FirstListing ? trouble : QString(), false, 0));
}

void Situation::arm(const QString& trouble) const
{
    // The scenario is read at a listing, which is to pass a trouble of listings by. The bring-up
    // comes with its board in the pass itself.
    QFile::remove(nestedFile);
    const bool isListing = getForm(state).command == getForm(State::Listing).command;
    bench->setScenario(getScenario(trouble, isBringUp(state), isListing ? 1 : 0));
}

void Situation::approach(KSBaseHandler* engine) const
{
    if (!isBringUp(state)) {
        Board::CommandHandler* const handler =
            Board::CommandHandler::create(CommandType::Refresh, "board list", engine);
        Board::waitCommandHandlerReady(handler);
        handler->destroy();
    }
    if (bench != nullptr) {
        journalStart = bench->getJournal().size();
    }
}

QStringList Situation::perform(KSBaseHandler* engine) const
{
    try {
        return operate(engine);
    } catch (const Orvex::Exception& failure) {
        if (state == State::Capture) {
            // The page leaves its step behind when it is left so.
            Orvex::console->unindent();
        }
        // Without the place in the source that stands behind.
        return {QStringLiteral("thrown: ") +
                Orvex::getReadable(failure.getMessage()).section(QStringLiteral(" ["), 0, 0)};
    }
}

QStringList Situation::operate(KSBaseHandler* engine) const
{
    const std::string file = "design.ksb";
    switch (state) {
    case State::Mode:
        return {QStringLiteral("read: ") + getHead(QString::fromStdString(engine->getMode()))};
    case State::ForceBit:
        return {engine->getForceBit() ? QStringLiteral("read: set")
                                      : QStringLiteral("read: clear")};
    case State::Monitor:
        return {QStringLiteral("read: ") + summarize(engine->getMonitor(0))};
    case State::Raw:
        return {QStringLiteral("read: ") + summarize(engine->sendCommand("help"))};
    case State::Nested:
        return nest(engine);
    case State::Help:
    case State::CommandFile:
    case State::Capture:
        useWindow(*engine, state);
        break;
    case State::SetMode:
        engine->setMode("Jtag only");
        break;
    case State::SetReset:
        engine->setResetBit(true);
        break;
    case State::SetClock:
        engine->setClockBit(false);
        break;
    case State::SetForceBit:
        engine->setForceBit(false);
        break;
    case State::Select:
        engine->select("Aurora");
        break;
    case State::Flash:
        engine->programFlash(file);
        break;
    case State::Load:
        engine->sendBitstream(file);
        break;
    case State::ErrorHandler:
        engine->setErrorHandler("Text", "errors.txt");
        break;
    case State::Listing:
    case State::BringUpSelect:
    case State::BringUpMode:
    case State::BringUpClock:
    case State::BringUpReset:
    case State::BringUpRelease:
    case State::BringUpRestore:
        engine->refreshTamsaMap();
        break;
    case State::Probing:
    case State::Starting:
    case State::FirstListing:
    case State::Idle:
    case State::Closing:
        break;
    }
    return {};
}

void Situation::letGo() const
{
    bench->writeFile(nestedFile, {});
}

bool Situation::isAsked() const
{
    const QStringList lines = bench->getJournal().mid(journalStart);
    const QString command = getForm(state).command;
    return std::any_of(lines.begin(), lines.end(),
                       [&command](const QString& line) { return line.startsWith(command); });
}

} // namespace Test
