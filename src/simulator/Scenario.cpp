#include "Scenario.h"

#include <cstdlib>

namespace Simulator
{

namespace
{

ChannelSetup makeSupply(const std::string& name, double voltage, double current)
{
    ChannelSetup supply;
    supply.name = name;
    supply.voltage = voltage;
    supply.current = current;
    return supply;
}

ChannelSetup makeTemperature()
{
    ChannelSetup temperature;
    temperature.name = "Temperature";
    temperature.values = {"41.5°C"};
    temperature.drifting = true;
    return temperature;
}

std::string getEnvironment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

} // namespace

Scenario Scenario::getBuiltIn()
{
    BoardSetup board;
    board.name = "KS-Dev 1 Aurora";
    board.identifier = "0x534B0001";
    board.selected = true;
    board.channels = {makeSupply("VCore", 1.0, 0.35), makeSupply("VAux", 1.8, 0.12),
                      makeSupply("VIO", 3.3, 0.08), makeTemperature()};

    Scenario scenario;
    scenario.state = getDefaultState();
    scenario.boards.push_back(board);
    return scenario;
}

std::string Scenario::getDefaultState()
{
    const std::string stateHome = getEnvironment("XDG_STATE_HOME");
    const std::string parent =
        stateHome.empty() ? getEnvironment("HOME") + "/.local/state" : stateHome;
    return parent + "/kestoboard-simulator";
}

} // namespace Simulator
