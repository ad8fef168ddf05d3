#include "Panel.h"

#include <Board/KSBaseHandler.h>

#include <QTimer>

namespace Bench
{

Panel::Panel(int& argc, char** argv)
    : toolkit(argc, argv)
    , theme(Orvex::Theme::Scheme::Light)
    , engine(nullptr)
{
    QCoreApplication::setOrganizationName(QStringLiteral("KestoboardBench"));
    QCoreApplication::setApplicationName(QStringLiteral("Bench"));
    Orvex::console = &console;
    Orvex::theme = &theme;
    Zandu::application = &application;
    window = std::make_unique<Board::MainWindow>();
    engine = window->getKSBaseHandler();
    for (QTimer* const timer :
         engine->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
        timer->stop();
    }
}

Panel::~Panel()
{
    window.reset();
    engine->destroy();
    Zandu::application = nullptr;
    Orvex::theme = nullptr;
    Orvex::console = nullptr;
}

std::size_t Panel::exchange(const std::string& command) const
{
    Board::CommandHandler* const handler =
        Board::CommandHandler::create(Board::CommandHandler::CommandType::Control, command, engine);
    Board::waitCommandHandlerReady(handler);
    const std::size_t size = handler->getResult().size();
    handler->destroy();
    return size;
}

} // namespace Bench
