#include "support/Panel.h"

#include <Board/KSBaseHandler.h>

#include <QTimer>

namespace Test
{

Panel::Panel()
    : window(std::make_unique<Board::MainWindow>())
    , engine(window->getKSBaseHandler())
{
    getPollTimer()->stop();
}

Panel::~Panel()
{
    window.reset();
    engine->destroy();
}

Board::Folio* Panel::getFolio() const
{
    return window->getFolio();
}

QTimer* Panel::getPollTimer() const
{
    const int pollInterval = 5000;
    for (QTimer* const timer :
         engine->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (timer->interval() == pollInterval) {
            return timer;
        }
    }
    return nullptr;
}

std::string Panel::run(CommandType type, const std::string& command) const
{
    Board::CommandHandler* const handler = Board::CommandHandler::create(type, command, engine);
    Board::waitCommandHandlerReady(handler);
    std::string reply = handler->getResult();
    handler->destroy();
    return reply;
}

} // namespace Test
