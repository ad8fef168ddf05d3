#ifndef SIMULATOR_BOARD_H
#define SIMULATOR_BOARD_H

#include "BoardSetup.h"

#include <string>
#include <vector>

namespace Simulator
{

/// What the board does with the words that a load finds wrong.
struct ErrorHandler {
    std::string name = "Text";
    std::string outFilePath; ///< where the report of a load goes; empty for no report
};

/// One simulated board: what the scenario says of it, and the state that commands leave in it.
class Board
{
public:
    explicit Board(const BoardSetup& boardSetup);

    /// Takes over a later reading of the scenario. Mode and force bit keep what commands made of
    /// them, unless the scenario itself says something else than before.
    void update(const BoardSetup& boardSetup);

    const BoardSetup& getSetup() const { return setup; }

    const std::string& getMode() const { return mode; }
    /// Throws Refusal for a mode that the board does not have, or when its mode is locked.
    void setMode(const std::string& text);

    /// Throws Refusal when the scenario makes the bit unreadable.
    bool getForceBit() const;
    void setForceBit(bool value) { forceBit = value; }

    bool getResetBit() const { return resetBit; }
    void setResetBit(bool value) { resetBit = value; }
    bool getClockBit() const { return clockBit; }
    void setClockBit(bool value) { clockBit = value; }

    const ErrorHandler& getErrorHandler() const { return errorHandler; }
    void setErrorHandler(const ErrorHandler& handler) { errorHandler = handler; }

    /// A fresh reading of all channels, one line each.
    std::string readMonitor();

private:
    BoardSetup setup;
    std::string mode;
    bool forceBit;
    bool resetBit = false;
    bool clockBit = false;
    ErrorHandler errorHandler;
    unsigned long readings = 0;
};

} // namespace Simulator

#endif
