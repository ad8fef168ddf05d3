#include "app/ActivityIndicator.h"

#include "app/DesktopNotice.h"
#include "app/ElidedLabel.h"
#include "app/ReplyVerdict.h"

#include <Board/KSBaseHandler.h>
#include <foundation/Encoding.h>
#include <foundation/ForEachControler.h>
#include <foundation/Theme.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QSettings>
#include <QTime>

#include <chrono>

namespace Kestoboard
{

namespace
{

using namespace std::chrono_literals;

const std::chrono::milliseconds tick = 250ms;
/// What the panel asks for by itself is usually over by then.
const qint64 backgroundPatience = 1500;
const int firstPatience = 10;
/// Who waits so long for a transfer may have turned to something else.
const qint64 longTransfer = 10'000;
const int iconSize = 16;
const int widestLabel = 560;
const qint64 minute = 60'000;

QString getDuration(qint64 milliseconds)
{
    if (milliseconds < minute) {
        return QLocale().toString(static_cast<double>(milliseconds) / 1000.0, 'f', 1) +
               QStringLiteral(" s");
    }
    return QTime(0, 0).addMSecs(static_cast<int>(milliseconds)).toString(QStringLiteral("h:mm:ss"));
}

QString getClock(qint64 milliseconds)
{
    return QTime(0, 0).addMSecs(static_cast<int>(milliseconds)).toString(QStringLiteral("m:ss"));
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

QString getPatienceKey()
{
    return QStringLiteral("Activity/patience");
}

} // namespace

ActivityIndicator::ActivityIndicator(Board::KSBaseHandler* observedEngine, QWidget* parent)
    : QWidget(parent)
    , engine(observedEngine)
    , icon(new QLabel(this))
    , label(new ElidedLabel(this))
    , lastText(tr("Idle"))
    , lastIcon("")
{
    setObjectName(QStringLiteral("activityIndicator"));
    icon->setFixedSize(iconSize, iconSize);
    label->setObjectName(QStringLiteral("activityLabel"));
    label->setMaximumWidth(widestLabel);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 8, 0);
    row->setSpacing(5);
    row->addWidget(icon);
    row->addWidget(label);

    clock.start();
    connect(engine, &Board::KSBaseHandler::commandAdded, this, &ActivityIndicator::observe);
    connect(&ticker, &QTimer::timeout, this, &ActivityIndicator::refresh);
    connect(Orvex::theme, &Orvex::Theme::schemeChanged, this, &ActivityIndicator::refresh);
    observe();
    refresh();
}

QString ActivityIndicator::getText() const
{
    return text;
}

int ActivityIndicator::getPatience()
{
    bool isNumber = false;
    const int seconds = QSettings().value(getPatienceKey(), firstPatience).toInt(&isNumber);
    return isNumber && seconds >= 0 ? seconds : firstPatience;
}

void ActivityIndicator::setPatience(int seconds)
{
    QSettings().setValue(getPatienceKey(), seconds);
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
        pendings[handler] = {handler, getShortForm(Orvex::getReadable(handler->getCommand())),
                             handler->getCommandType(), clock.elapsed()};
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
    const Pending pending = pendings.take(handler);
    if (pending.handler) {
        tellEnd(pending, pending.handler->getResult());
    }
    lastEnd = clock.elapsed();
    refresh();
}

void ActivityIndicator::tellEnd(const Pending& pending, const std::string& reply)
{
    const ReplyVerdict verdict = ReplyVerdict::fromReply(pending.command.toStdString(), reply);
    // The Monitoring page itself shows what came of its readings.
    if (pending.type == Type::Monitor ||
        (pending.type == Type::Refresh && verdict.outcome == ReplyVerdict::Outcome::Succeeded)) {
        return;
    }
    const qint64 elapsed = clock.elapsed() - getStart(pending);
    const QString duration = getDuration(elapsed);
    switch (verdict.outcome) {
    case ReplyVerdict::Outcome::Succeeded:
        lastIcon = "success";
        lastText = tr("\"%1\" succeeded after %2").arg(pending.command, duration);
        break;
    case ReplyVerdict::Outcome::Failed:
        lastIcon = "error";
        lastText = tr("\"%1\" failed after %2").arg(pending.command, duration);
        break;
    case ReplyVerdict::Outcome::Unknown:
        lastIcon = "warning";
        lastText = tr("\"%1\" ended after %2, nobody knows how").arg(pending.command, duration);
        break;
    }
    if (!verdict.reason.isEmpty()) {
        lastText += QStringLiteral(" – ") +
                    QStringList{verdict.reason, verdict.hint}.join(QLatin1Char(' ')).trimmed();
    }
    if (pending.type == Type::Transfer && elapsed >= longTransfer) {
        notify(window(), lastText);
    }
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

bool ActivityIndicator::isLate(const Pending& pending, qint64 elapsed) const
{
    const qint64 patience = getPatience() * qint64(1000);
    return patience > 0 && elapsed >= patience && pending.type != Type::Transfer;
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
    const Pending* const running = getRunning();
    const qint64 elapsed = running != nullptr ? clock.elapsed() - getStart(*running) : 0;
    if (running == nullptr || (isBackground(running->type) && elapsed < backgroundPatience)) {
        present(lastIcon, lastText);
    } else if (isLate(*running, elapsed)) {
        present("warning", tr("No answer to \"%1\" for %2: the board tool may be busy or stuck")
                               .arg(running->command, getClock(elapsed)));
    } else {
        present("time", tr("Running \"%1\" (%2)").arg(running->command, getClock(elapsed)));
    }
}

void ActivityIndicator::present(const char* iconName, const QString& words)
{
    icon->setPixmap(Orvex::theme->getIcon(iconName).pixmap(iconSize, iconSize));
    if (words == text) {
        return;
    }
    text = words;
    label->setLine(text);
}

} // namespace Kestoboard
