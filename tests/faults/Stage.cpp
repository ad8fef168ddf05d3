#include "Stage.h"

#include <QTimer>

namespace Test
{

Stage::Stage()
    : window(std::make_unique<Board::MainWindow>())
    , engine(window->getKSBaseHandler())
{
    for (QTimer* const timer : engine->findChildren<QTimer*>()) {
        timer->stop();
    }
}

Stage::~Stage()
{
    window.reset();
    destroyEngine();
}

void Stage::destroyEngine()
{
    if (engine) {
        engine->destroy();
    }
}

} // namespace Test
