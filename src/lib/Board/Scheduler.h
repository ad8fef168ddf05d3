#ifndef BOARD_SCHEDULER_H
#define BOARD_SCHEDULER_H

#include <Board/Export.h>

#include <QObject>

class QThread;

namespace Board
{

class KSBaseHandler;

/// The worker's side of the engine: executes one command at each start of the worker thread.
///
/// There is one for the life of the engine; it lives on the worker thread and is never released.
class BOARD_EXPORT Scheduler : public QObject
{
    Q_OBJECT

public:
    /// @throws Orvex::FactoryFailed for a null argument, with nothing made.
    static Scheduler* create(QThread* workerThread, KSBaseHandler* engine);
    static void preCreate(const QThread* workerThread, const KSBaseHandler* engine);
    /// Moves to the worker thread, then has `launch` run there at each start of it.
    void postCreate(QThread* workerThread, KSBaseHandler* engine);
    void destroy();
    virtual void preDestroy();

public slots:
    /// Executes the first pending command, if there is one, and ends the thread. Worker thread.
    ///
    /// The choice is made here and not when commands arrive, so a command of a lower type overtakes
    /// all that wait. No exception leaves: a failure is reported on the console.
    void launch();

private:
    Scheduler(QThread* workerThread, KSBaseHandler* engine);

    QThread* const thread;              ///< the engine's; not owned
    KSBaseHandler* const ksBaseHandler; ///< not owned
};

} // namespace Board

#endif
