#ifndef APP_ACTIVITYINDICATOR_H
#define APP_ACTIVITYINDICATOR_H

#include <Board/CommandHandler.h>

#include <QElapsedTimer>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

class QLabel;

namespace Board
{
class KSBaseHandler;
} // namespace Board

namespace Kestoboard
{

class ElidedLabel;

/// Says what the board tool is at: nothing, a command and for how long, or how the last command
/// ended, which stays until the next one.
///
/// What the panel asks for by itself every few seconds, the listings and the readings of the
/// monitors, is told only when it takes long: the indicator is calm.
class ActivityIndicator : public QWidget
{
    Q_OBJECT

public:
    /// The engine outlives the indicator.
    ActivityIndicator(Board::KSBaseHandler* observedEngine, QWidget* parent);

    /// The state in words.
    QString getText() const;

    /// How long a command may take before the tool counts as stuck, in seconds; 0 for ever.
    /// Transfers never count. Stored for the next run.
    /// @{
    static int getPatience();
    static void setPatience(int seconds);
    /// @}

private:
    /// A command that is waited for.
    struct Pending {
        QPointer<Board::CommandHandler> handler;
        QString command;
        Board::CommandHandler::CommandType type = Board::CommandHandler::CommandType::Invalid;
        qint64 created = 0; ///< milliseconds of the clock
    };

    void observe();
    void finish(Board::CommandHandler* handler);
    void refresh();
    const Pending* getRunning() const;
    bool isLate(const Pending& pending, qint64 elapsed) const;
    qint64 getStart(const Pending& pending) const;
    void tellEnd(const Pending& pending, const std::string& reply);
    void present(const char* iconName, const QString& words);

    Board::KSBaseHandler* const engine;
    QMap<Board::CommandHandler*, Pending> pendings;
    /// Every handler of the queue that has been taken note of; only compared, never followed.
    QSet<const QObject*> observed;
    QElapsedTimer clock;
    /// When the board tool became free for the command at hand.
    qint64 lastEnd = 0;
    QTimer ticker;
    QLabel* icon;
    ElidedLabel* label;
    QString text;
    /// What is shown while nothing runs.
    QString lastText;
    const char* lastIcon;
};

} // namespace Kestoboard

#endif
