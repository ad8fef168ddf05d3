#include <Board/Scheduler.h>

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <foundation/Console.h>
#include <foundation/FactoryFailed.h>
#include <foundation/Guard.h>
#include <foundation/HandOff.h>
#include <foundation/Raise.h>

#include <QThread>

namespace Board
{

namespace
{

const char sourceFile[] = "src/lib/Board/Scheduler";

} // namespace

Scheduler* Scheduler::create(QThread* workerThread, KSBaseHandler* engine)
{
    preCreate(workerThread, engine);
    auto* const scheduler = new Scheduler(workerThread, engine);
    scheduler->postCreate(workerThread, engine);
    return scheduler;
}

void Scheduler::preCreate(const QThread* workerThread, const KSBaseHandler* engine)
{
    if (workerThread == nullptr) {
        Orvex::raise(Orvex::FactoryFailed("Null thread"), "preCreate", sourceFile, __LINE__);
    }
    if (engine == nullptr) {
        Orvex::raise(Orvex::FactoryFailed("Null ksBaseHandler"), "preCreate", sourceFile, __LINE__);
    }
}

Scheduler::Scheduler(QThread* workerThread, KSBaseHandler* engine)
    : thread(workerThread)
    , ksBaseHandler(engine)
{
}

void Scheduler::postCreate(QThread* workerThread, KSBaseHandler* /*engine*/)
{
    moveToThread(workerThread);
    connect(workerThread, SIGNAL(started()), this, SLOT(launch()));
}

void Scheduler::destroy()
{
    preDestroy();
    delete this;
}

void Scheduler::preDestroy() {}

void Scheduler::launch()
{
    Orvex::takeOver(thread);
    CommandHandler* const handler = ksBaseHandler->chooseCommandHandler();
    if (handler != nullptr) {
        Orvex::guard(
            "launch", sourceFile, __LINE__, [&] { ksBaseHandler->executeCommand(handler); },
            [](const Orvex::Exception& failure) { Orvex::console->print(failure); });
    }
    Orvex::handOver(thread);
    thread->quit();
}

} // namespace Board
