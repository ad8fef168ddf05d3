#include "support/Panel.h"

#include <Board/KSBaseHandler.h>

namespace Test
{

Panel::Panel()
    : window(std::make_unique<Board::MainWindow>())
    , engine(window->getKSBaseHandler())
{
}

Panel::~Panel()
{
    window.reset();
    engine->destroy();
}

Board::Folio* Panel::getFolio() const { return window->getFolio(); }

} // namespace Test
