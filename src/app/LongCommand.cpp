#include "app/LongCommand.h"

#include <Board/CommandHandler.h>
#include <Board/Replies.h>

#include <string>

namespace Kestoboard
{

namespace
{

bool begins(const Board::CommandHandler* handler, const char* beginning)
{
    // As typed, a command may begin with blanks, or have many between two words.
    return Board::getSimplified(handler->getCommand()).rfind(beginning, 0) == 0;
}

} // namespace

bool isBoardWrite(const Board::CommandHandler* handler)
{
    return handler->getCommandType() == Board::CommandHandler::CommandType::Transfer ||
           begins(handler, "chip bitstream load ") || begins(handler, "board spi flash program ");
}

bool isTransfer(const Board::CommandHandler* handler)
{
    return isBoardWrite(handler) || begins(handler, "ksscope capture ");
}

} // namespace Kestoboard
