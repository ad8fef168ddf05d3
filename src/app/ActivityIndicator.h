#ifndef APP_ACTIVITYINDICATOR_H
#define APP_ACTIVITYINDICATOR_H

#include <Board/CommandHandler.h>

#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <string>

namespace Board
{
class KSBaseHandler;
} // namespace Board

namespace Kestoboard
{

class ElidedLabel;
class StateIcon;
struct ReplyVerdict;

/// Says what the board tool is at: nothing, a command and for how long, or how the last command
/// ended, which stays until the next one.
///
/// The verdict is that of what the person asked for last. What the panel asks for by itself, the
/// listings on a timer, the readings and the state of a board that was chosen, is told only while
/// it takes long; a listing that fails is told until one succeeds or the person goes on. So the
/// indicator is calm.
class ActivityIndicator : public QWidget
{
    Q_OBJECT

public:
    /// Tells the time in milliseconds, from any moment on; only counts.
    using Clock = std::function<qint64()>;

    /// The engine outlives the indicator.
    ActivityIndicator(Board::KSBaseHandler* observedEngine, QWidget* parent,
                      Clock steadyClock = getSteadyClock());

    /// Whether the command has been answered. Whoever waits for it may not know yet: their wait
    /// may lie below another one.
    bool isAnswered(Board::CommandHandler* handler) const
    {
        return observed.contains(handler) && !pendings.contains(handler);
    }

    /// The state in words.
    QString getText() const { return shown.text; }
    /// The state in a word or two, beside the text of the command; empty when the command that has
    /// just ended is none whose verdict is told.
    QString getBrief() const { return shown.brief; }
    /// The name of the icon of the state.
    std::string getIconName() const { return shown.icon; }

    /// That the command at hand has no verdict and how long it has been running, as a sentence to
    /// stand behind the one that tells the end of the tool; empty when there is no such command, or
    /// the panel only reads by itself.
    QString getUnfinished() const;

    /// How long something took, in words that stand behind "after".
    static QString getDuration(qint64 milliseconds);
    /// How long something has been running, as a clock: minutes and seconds, and hours once there
    /// is one.
    static QString getClock(qint64 milliseconds);
    /// Whether who waited so long for a command may have turned to something else, and is to be
    /// told by the desktop.
    static bool isWorthNotice(bool isTransfer, qint64 milliseconds);

    /// How long a command may take before the tool counts as stuck, in seconds; 0 for ever. Stored
    /// for the next run.
    /// @{
    static int getPatience();
    static void setPatience(int seconds);
    /// @}
    /// The same for transfers, which may take for ever at first.
    /// @{
    static int getTransferPatience();
    static void setTransferPatience(int seconds);
    /// @}

signals:
    /// The state has changed, or the colours that it is shown in.
    void changed();

private:
    /// What is to be seen.
    struct State {
        const char* icon = "";
        QString text;
        QString brief;
    };

    /// A command that is waited for.
    struct Pending {
        QPointer<Board::CommandHandler> handler;
        QString command;
        Board::CommandHandler::CommandType type = Board::CommandHandler::CommandType::Invalid;
        qint64 created = 0;      ///< milliseconds of the clock
        bool isPersons = false;  ///< whether the person asked for it
        bool isTransfer = false; ///< whether it may take long
    };

    static Clock getSteadyClock();
    void observe();
    void finish(Board::CommandHandler* handler);
    void refresh();
    const Pending* getRunning() const;
    /// How many of the person's commands are queued behind the one at hand: a press that waits is
    /// told too, or else it is repeated.
    int countWaiting() const;
    bool isLate(const Pending& pending, qint64 elapsed) const;
    qint64 getStart(const Pending& pending) const;
    void tellEnd(const Pending& pending, const ReplyVerdict& verdict);
    void tellHint(const Pending& pending, const ReplyVerdict& verdict);
    static State getEnd(const QString& command, const ReplyVerdict& verdict,
                        const QString& duration);
    State getState() const;
    void present(const State& state);

    Board::KSBaseHandler* const engine;
    QMap<Board::CommandHandler*, Pending> pendings;
    /// Every handler of the queue that has been taken note of; only compared, never followed.
    QSet<const QObject*> observed;
    const Clock clock;
    /// When the board tool became free for the command at hand.
    qint64 lastEnd = 0;
    QTimer ticker;
    StateIcon* icon;
    ElidedLabel* label;
    State shown;
    /// How the person's last command ended.
    State last;
    /// The listing that failed, for as long as none has succeeded since.
    State trouble;
    bool isTroubleNew = false;
};

} // namespace Kestoboard

#endif
