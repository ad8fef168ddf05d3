#include "Board.h"

#include "MonitorReport.h"
#include "Refusal.h"

#include <algorithm>

namespace Simulator
{

namespace
{

const std::vector<std::string> modes{"Master Serial", "Jtag only", "Master SPI", "Master SPI + Vcc",
                                     "Slave SpaceWire"};

std::string getModeList()
{
    std::string list;
    for (const std::string& mode : modes) {
        list += (list.empty() ? "'" : ", '") + mode + "'";
    }
    return list;
}

} // namespace

Board::Board(const BoardSetup& boardSetup)
    : setup(boardSetup)
    , mode(boardSetup.mode)
    , forceBit(boardSetup.forceBit == ForceBit::Set)
{
}

void Board::update(const BoardSetup& boardSetup)
{
    if (boardSetup.mode != setup.mode) {
        mode = boardSetup.mode;
    }
    if (boardSetup.forceBit != setup.forceBit) {
        forceBit = boardSetup.forceBit == ForceBit::Set;
    }
    setup = boardSetup;
}

void Board::setMode(const std::string& text)
{
    if (setup.modeLocked) {
        throw Refusal("The mode switch of this board is locked");
    }
    const bool known = std::find(modes.begin(), modes.end(), text) != modes.end();
    // The text is not repeated: whoever looks for a sign of success must not find it in here.
    if (!known && text != setup.mode) {
        throw Refusal("Unknown mode, the modes are " + getModeList());
    }
    mode = text;
}

bool Board::getForceBit() const
{
    if (setup.forceBit == ForceBit::Unreadable) {
        throw Refusal("The force bit cannot be read");
    }
    return forceBit;
}

std::string Board::readMonitor()
{
    return getMonitorReport(setup.channels, readings++);
}

} // namespace Simulator
