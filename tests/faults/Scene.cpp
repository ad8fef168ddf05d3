#include "Scene.h"

#include "Situation.h"

#include <foundation/Exception.h>

#include <QCoreApplication>

namespace Test
{

void Scene::begin()
{
    if (!bench) {
        bench = std::make_unique<Bench>();
        Situation(bench.get(), State::Idle).prepare({});
    }
}

void Scene::finish()
{
    // What the worker has reported at the end of an engine is printed now, and not in the next row.
    QCoreApplication::processEvents();
    TestApplication::get()->takeEscapedExceptions();
    if (!stage) {
        bench.reset();
    }
}

void Scene::renew()
{
    end();
    begin();
}

void Scene::end()
{
    stage.reset();
    bench.reset();
}

QString Scene::makeStage()
{
    stage.reset();
    try {
        stage = std::make_unique<Stage>();
    } catch (const Orvex::Exception& failure) {
        return QString::fromStdString(failure.getMessage()).section(" [", 0, 0);
    }
    return {};
}

Board::KSBaseHandler* Scene::takeEngine()
{
    Situation(bench.get(), State::Idle).prepare({});
    if (stage) {
        stage->getEngine()->refreshTamsaMap();
    } else {
        stage = std::make_unique<Stage>();
    }
    return stage->getEngine();
}

} // namespace Test
