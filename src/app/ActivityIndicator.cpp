#include "app/ActivityIndicator.h"

#include "app/DesktopNotice.h"
#include "app/ElidedLabel.h"
#include "app/Initiative.h"
#include "app/LongCommand.h"
#include "app/ReplyVerdict.h"
#include "app/StateIcon.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>
#include <foundation/Encoding.h>
#include <foundation/ForEachControler.h>
#include <foundation/HandOff.h>
#include <foundation/Theme.h>

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLocale>
#include <QSettings>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Kestoboard
{

namespace
{

using namespace std::chrono_literals;

const std::chrono::milliseconds tick = 250ms;
/// What the panel asks for by itself is usually over by then.
const qint64 backgroundPatience = 1500;
const int firstPatience = 10;
const qint64 longTransfer = 10000;
const qint64 shortest = 100;
const qint64 minute = 60000;
/// In seconds.
const qint64 hour = 3600;

QString getTwoDigits(qint64 number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

/// The command without the directory of the file that it names.
QString getShortForm(const QString& command)
{
    const int directory = command.indexOf(QLatin1String(" /"));
    return directory < 0 ? command
                         : command.left(directory + 1) +
                               command.mid(command.lastIndexOf(QLatin1Char('/')) + 1);
}

using Type = Board::CommandHandler::CommandType;

/// What the panel asks for by itself.
bool isBackground(Type type)
{
    return type == Type::Refresh || type == Type::Monitor;
}

/// Whether a read was typed: what a person types is echoed on the console right before it is sent,
/// what a page reads for itself is not.
bool isEchoed(const QString& command)
{
    const std::deque<Orvex::Message> messages = Orvex::console->getRecentMessages();
    return !messages.empty() && Orvex::getReadable(messages.back().text).contains(command);
}

/// Whether a command that has just been created is what the person asked for.
bool isPersonal(Type type, const QString& command)
{
    if (isBackground(type)) {
        // With F5, or from the menu.
        return type == Type::Refresh && Initiative::isPress();
    }
    return Initiative::isPersons() &&
           (!command.startsWith(QLatin1String("board get ")) || isEchoed(command));
}

QString getPatienceKey()
{
    return QStringLiteral("Activity/patience");
}

QString getTransferPatienceKey()
{
    return QStringLiteral("Activity/transferPatience");
}

int readSeconds(const QString& key, int first)
{
    bool isNumber = false;
    const int seconds = QSettings().value(key, first).toInt(&isNumber);
    return isNumber && seconds >= 0 ? seconds : first;
}

} // namespace

ActivityIndicator::ActivityIndicator(Board::KSBaseHandler* observedEngine, QWidget* parent,
                                     Clock steadyClock)
    : QWidget(parent)
    , engine(observedEngine)
    , clock(std::move(steadyClock))
    , icon(new StateIcon(this))
    , label(new ElidedLabel(this))
{
    last.text = tr("Idle");
    setObjectName(QStringLiteral("activityIndicator"));
    label->setObjectName(QStringLiteral("activityLabel"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 8, 0);
    row->setSpacing(5);
    row->addWidget(icon);
    row->addWidget(label, 1);

    connect(engine, &Board::KSBaseHandler::commandAdded, this, &ActivityIndicator::observe);
    connect(&ticker, &QTimer::timeout, this, &ActivityIndicator::refresh);
    connect(Orvex::theme, &Orvex::Theme::schemeChanged, this, &ActivityIndicator::refresh);
    observe();
    refresh();
}

ActivityIndicator::Clock ActivityIndicator::getSteadyClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

QString ActivityIndicator::getDuration(qint64 milliseconds)
{
    if (milliseconds < shortest) {
        return tr("less than 0.1 s");
    }
    if (milliseconds < minute) {
        return QLocale().toString(static_cast<double>(milliseconds) / 1000.0, 'f', 1) +
               QStringLiteral(" s");
    }
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(seconds / hour), getTwoDigits(seconds % hour / 60),
             getTwoDigits(seconds % 60));
}

QString ActivityIndicator::getClock(qint64 milliseconds)
{
    // To the nearest second, as the engine's own message counts.
    const qint64 seconds = (milliseconds + 500) / 1000;
    if (seconds < hour) {
        return QStringLiteral("%1:%2").arg(QString::number(seconds / 60),
                                           getTwoDigits(seconds % 60));
    }
    return getDuration(seconds * 1000);
}

bool ActivityIndicator::isWorthNotice(bool isTransfer, qint64 milliseconds)
{
    return isTransfer && milliseconds >= longTransfer;
}

int ActivityIndicator::getPatience()
{
    return readSeconds(getPatienceKey(), firstPatience);
}

void ActivityIndicator::setPatience(int seconds)
{
    QSettings().setValue(getPatienceKey(), seconds);
}

int ActivityIndicator::getTransferPatience()
{
    return readSeconds(getTransferPatienceKey(), 0);
}

void ActivityIndicator::setTransferPatience(int seconds)
{
    QSettings().setValue(getTransferPatienceKey(), seconds);
}

/// Takes note of the commands that have joined the queue.
void ActivityIndicator::observe()
{
    Board::CommandHandler* handler = nullptr;
    for (Orvex::ForEachControler<Board::CommandHandler*> loop(handler,
                                                              engine->getCommandHandlers());
         loop.next();) {
        // Whether it has its reply is not asked: the worker may be writing that.
        if (observed.contains(handler)) {
            continue;
        }
        observed.insert(handler);
        connect(handler, &QObject::destroyed, this, [this, handler] { observed.remove(handler); });
        const QString command = Orvex::getReadable(handler->getCommand());
        pendings[handler] = {handler,
                             getShortForm(command),
                             handler->getCommandType(),
                             clock(),
                             isPersonal(handler->getCommandType(), command),
                             isTransfer(handler)};
        // Queued before whoever waits is told, so that the handler is still there.
        connect(
            handler, &Board::CommandHandler::resultReady, this,
            [this, handler] { finish(handler); }, Qt::QueuedConnection);
    }
    if (!pendings.isEmpty() && !ticker.isActive()) {
        ticker.start(tick);
    }
    refresh();
}

void ActivityIndicator::finish(Board::CommandHandler* handler)
{
    Orvex::takeOver(handler);
    const Pending pending = pendings.take(handler);
    last.brief.clear();
    if (pending.handler) {
        const std::string& reply = pending.handler->getResult();
        const ReplyVerdict verdict = ReplyVerdict::fromReply(pending.command.toStdString(), reply);
        tellEnd(pending, verdict);
    }
    lastEnd = clock();
    refresh();
}

void ActivityIndicator::tellEnd(const Pending& pending, const ReplyVerdict& verdict)
{
    const qint64 elapsed = clock() - getStart(pending);
    const State end = getEnd(pending.command, verdict, getDuration(elapsed));
    if (pending.isPersons) {
        last = end;
        isTroubleNew = false;
        if (pending.type == Type::Refresh) {
            // Told already: the next listing that fails tells nothing new.
            const bool isTrouble = verdict.outcome != ReplyVerdict::Outcome::Succeeded;
            trouble = isTrouble ? last : State();
        }
        tellHint(pending, verdict);
    } else if (pending.type == Type::Refresh) {
        const bool isTrouble = verdict.outcome != ReplyVerdict::Outcome::Succeeded;
        if (isTrouble && trouble.text.isEmpty()) {
            isTroubleNew = true;
            tellHint(pending, verdict);
        }
        isTroubleNew = isTroubleNew && isTrouble;
        trouble = isTrouble ? end : State();
    }
    if (isWorthNotice(pending.isTransfer, elapsed)) {
        notify(window(), end.text);
    }
}

/// What can be done stands on the console as well, where it is never cut off: below the verdict,
/// which the engine prints between the end of the handler and the next event.
void ActivityIndicator::tellHint(const Pending& pending, const ReplyVerdict& verdict)
{
    if (verdict.hint.isEmpty()) {
        return;
    }
    const QString words = verdict.reason + QStringLiteral(" – ") + verdict.hint;
    connect(pending.handler.data(), &QObject::destroyed, this, [this, words] {
        QTimer::singleShot(0, this,
                           [words] { Orvex::console->warning(words.toUtf8().constData(), ""); });
    });
}

ActivityIndicator::State ActivityIndicator::getEnd(const QString& command,
                                                   const ReplyVerdict& verdict,
                                                   const QString& duration)
{
    State end;
    switch (verdict.outcome) {
    case ReplyVerdict::Outcome::Succeeded:
        end = {"success", tr("\"%1\" succeeded after %2").arg(command, duration),
               tr("Succeeded after %1").arg(duration)};
        break;
    case ReplyVerdict::Outcome::Failed:
        end = {"error", tr("\"%1\" failed after %2").arg(command, duration),
               tr("Failed after %1").arg(duration)};
        break;
    case ReplyVerdict::Outcome::Unknown:
        end = {"warning", tr("\"%1\" ended after %2, nobody knows how").arg(command, duration),
               tr("Ended after %1, nobody knows how").arg(duration)};
        break;
    }
    for (const QString& words : {verdict.reason, verdict.hint}) {
        if (!words.isEmpty()) {
            end.text += QStringLiteral(" – ") + words;
        }
    }
    return end;
}

/// When the board tool could begin with a command: it does one after the other.
qint64 ActivityIndicator::getStart(const Pending& pending) const
{
    return qMax(pending.created, lastEnd);
}

const ActivityIndicator::Pending* ActivityIndicator::getRunning() const
{
    const auto found = pendings.constFind(engine->getCommandHandlers().getRunnings().getFirst());
    return found != pendings.constEnd() ? &*found : nullptr;
}

QString ActivityIndicator::getUnfinished() const
{
    const Pending* const running = getRunning();
    if (running == nullptr || isBackground(running->type)) {
        return {};
    }
    return tr("\"%1\" had run for %2 by then: nobody knows whether it worked.")
        .arg(running->command, getDuration(clock() - getStart(*running)));
}

int ActivityIndicator::countWaiting() const
{
    const Pending* const running = getRunning();
    return static_cast<int>(
        std::count_if(pendings.begin(), pendings.end(), [running](const Pending& pending) {
            return &pending != running && pending.isPersons && pending.handler;
        }));
}

bool ActivityIndicator::isLate(const Pending& pending, qint64 elapsed) const
{
    const int seconds = pending.isTransfer ? getTransferPatience() : getPatience();
    return seconds > 0 && elapsed >= seconds * qint64(1000);
}

void ActivityIndicator::refresh()
{
    // Handlers that have gone without a reply leave nothing to wait for.
    for (auto pending = pendings.begin(); pending != pendings.end();) {
        pending = pending->handler ? pending + 1 : pendings.erase(pending);
    }
    if (pendings.isEmpty()) {
        ticker.stop();
    }
    present(getState());
}

ActivityIndicator::State ActivityIndicator::getState() const
{
    const Pending* const running = getRunning();
    const qint64 elapsed = running != nullptr ? clock() - getStart(*running) : 0;
    if (running == nullptr || (!running->isPersons && elapsed < backgroundPatience)) {
        return isTroubleNew ? trouble : last;
    }
    const QString time = getClock(elapsed);
    if (isLate(*running, elapsed)) {
        return {
            "warning",
            tr("No answer to \"%1\" for %2: wait, or end the board tool ksbase2_cli and start the "
               "panel again")
                .arg(running->command, time),
            tr("No answer for %1: wait, or end ksbase2_cli").arg(time)};
    }
    if (const int count = countWaiting()) {
        const QString waiting = QLocale().toString(count);
        return {
            "time",
            tr("Running \"%1\" (%2), waiting behind it: %3").arg(running->command, time, waiting),
            tr("%1, waiting: %2", "a time and a number").arg(time, waiting)};
    }
    return {"time", tr("Running \"%1\" (%2)").arg(running->command, time), time};
}

void ActivityIndicator::present(const State& state)
{
    icon->showIcon(state.icon);
    if (state.text != shown.text) {
        label->setLine(state.text);
    }
    shown = state;
    emit changed();
}

} // namespace Kestoboard
