#include "Require.h"
#include "Targets.h"

#include <ScenarioError.h>
#include <ScenarioReader.h>

#include <set>

namespace Fuzz
{

namespace
{

void check(const Simulator::Scenario& scenario)
{
    std::set<std::string> names;
    for (const Simulator::BoardSetup& board : scenario.boards) {
        require(board.name.find('\n') == std::string::npos, "a name is one line");
        require(board.name.empty() || board.rawLine || names.insert(board.name).second,
                "every board has a name of its own");
        for (const Simulator::ChannelSetup& channel : board.channels) {
            require(!channel.name.empty() && channel.name.find('\n') == std::string::npos,
                    "a channel has a name");
        }
    }
    require(scenario.timeScale >= 0, "no time runs backwards");
    for (const Simulator::FaultSetup& fault : scenario.faults) {
        require(fault.skip >= 0 && fault.times >= 0 && fault.delayMs >= 0 && fault.bytes >= 0,
                "nothing is counted below zero");
    }
}

} // namespace

void scenario(const std::string& bytes)
{
    try {
        check(Simulator::parseScenario(bytes, "/bench/scenario.toml"));
    } catch (const Simulator::ScenarioError& refusal) {
        const std::string sentence = refusal.what();
        require(sentence.find('\n') == std::string::npos, "a refusal is one line");
    }
}

} // namespace Fuzz
