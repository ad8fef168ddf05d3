#include "Stage.h"

#include <QApplication>
#include <QTimer>

namespace Test
{

Board::MainWindow* findWindow(const Board::KSBaseHandler* engine)
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<Board::MainWindow*>(widget);
        if (window != nullptr && (engine == nullptr || window->getKSBaseHandler() == engine)) {
            return window;
        }
    }
    return nullptr;
}

Stage::Stage()
    : debugMode(true)
    , window(std::make_unique<Board::MainWindow>())
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
