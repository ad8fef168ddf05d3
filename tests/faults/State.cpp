#include "State.h"

#include <algorithm>

namespace Test
{

const QVector<StateForm>& getStates()
{
    static const QVector<StateForm> states{
        {State::Probing, QStringLiteral("looking for the tool"), {}},
        {State::Starting, QStringLiteral("starting the tool"), {}},
        {State::FirstListing, QStringLiteral("first listing"), QStringLiteral("board list")},
        {State::BringUpSelect, QStringLiteral("bring-up: selection"),
         QStringLiteral("board select 1")},
        {State::BringUpMode, QStringLiteral("bring-up: mode"), QStringLiteral("board set mode")},
        {State::BringUpClock, QStringLiteral("bring-up: clock"),
         QStringLiteral("board set jtag_clock on")},
        {State::BringUpReset, QStringLiteral("bring-up: reset"),
         QStringLiteral("board set reset on")},
        {State::BringUpRelease, QStringLiteral("bring-up: end of the reset"),
         QStringLiteral("board set reset off")},
        {State::BringUpRestore, QStringLiteral("bring-up: former selection"),
         QStringLiteral("board select 0")},
        {State::Idle, QStringLiteral("idle"), {}},
        {State::Listing, QStringLiteral("listing"), QStringLiteral("board list")},
        {State::Mode, QStringLiteral("reading the mode"), QStringLiteral("board get mode")},
        {State::ForceBit, QStringLiteral("reading the force bit"),
         QStringLiteral("board get force_bit")},
        {State::Monitor, QStringLiteral("monitoring"), QStringLiteral("board monitor get 0")},
        {State::SetMode, QStringLiteral("setting the mode"), QStringLiteral("board set mode")},
        {State::SetReset, QStringLiteral("setting the reset bit"),
         QStringLiteral("board set reset on")},
        {State::SetClock, QStringLiteral("setting the clock bit"),
         QStringLiteral("board set jtag_clock off")},
        {State::SetForceBit, QStringLiteral("setting the force bit"),
         QStringLiteral("board set force_bit off")},
        {State::Select, QStringLiteral("selecting a board"), QStringLiteral("board select 0")},
        {State::Flash, QStringLiteral("programming the flash"),
         QStringLiteral("board spi flash program")},
        {State::Load, QStringLiteral("loading a bitstream"), QStringLiteral("chip bitstream load")},
        {State::ErrorHandler, QStringLiteral("choosing the error handler"),
         QStringLiteral("chip bitstream err_handler")},
        {State::Raw, QStringLiteral("typed command"), QStringLiteral("help")},
        {State::Help, QStringLiteral("Help button"), QStringLiteral("help")},
        {State::CommandFile, QStringLiteral("command file"), QStringLiteral("board get force_bit")},
        {State::Capture, QStringLiteral("scope capture"), QStringLiteral("ksscope capture")},
        {State::Nested, QStringLiteral("three waits on each other"),
         QStringLiteral("board set force_bit off")},
        {State::Closing, QStringLiteral("closing"), {}},
    };
    return states;
}

const StateForm& getForm(State state)
{
    return *std::find_if(getStates().begin(), getStates().end(),
                         [state](const StateForm& form) { return form.state == state; });
}

bool isBringUp(State state)
{
    return state >= State::BringUpSelect && state <= State::BringUpRestore;
}

bool isGuarded(State state)
{
    return state == State::Help || state == State::CommandFile;
}

QVector<State> getWaitingStates()
{
    QVector<State> states;
    for (const StateForm& form : getStates()) {
        if (!form.command.isEmpty() && form.state != State::FirstListing) {
            states += form.state;
        }
    }
    return states;
}

} // namespace Test
