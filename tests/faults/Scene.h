#ifndef FAULTS_SCENE_H
#define FAULTS_SCENE_H

#include "Stage.h"
#include "support/Bench.h"

#include <QString>

#include <memory>

namespace Test
{

/// A bench and a panel on it, which serve one test after the other as long as both are whole.
class Scene
{
public:
    /// Before a test: a bench is there.
    void begin();
    /// After a test: what was left behind is served, and a bench without its panel goes.
    void finish();
    /// A new bench, without a panel.
    void renew();
    /// Ends the panel and the bench.
    void end();

    /// Makes the panel anew. Returns what was thrown, empty when nothing was.
    QString makeStage();
    /// Ends the panel alone.
    void endStage() { stage.reset(); }
    /// The engine of the panel, which knows the board of the bench alone.
    Board::KSBaseHandler* takeEngine();

    Bench* getBench() const { return bench.get(); }
    Stage* getStage() const { return stage.get(); }

private:
    std::unique_ptr<Bench> bench;
    std::unique_ptr<Stage> stage;
};

} // namespace Test

#endif
