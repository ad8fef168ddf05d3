#include "Bench.h"

#include "Refusal.h"

#include <iterator>

namespace Simulator
{

namespace
{

std::string getMarked(const Scenario& scenario)
{
    for (const BoardSetup& setup : scenario.boards) {
        if (setup.selected) {
            return setup.name;
        }
    }
    return {};
}

std::string getLine(const BoardSetup& setup, bool selected)
{
    if (setup.rawLine) {
        return *setup.rawLine;
    }
    return (selected ? "* " : "- ") + setup.identifier + " " + setup.name;
}

} // namespace

void Bench::apply(const Scenario& reading)
{
    std::map<std::string, Board> old;
    old.swap(boards);
    for (const BoardSetup& setup : reading.boards) {
        const auto known = old.find(setup.name);
        if (known != old.end()) {
            boards.insert(old.extract(known));
            boards.at(setup.name).update(setup);
        } else if (!setup.name.empty()) {
            boards.emplace(setup.name, Board(setup));
        }
    }

    const std::string newlyMarked = getMarked(reading);
    if (newlyMarked != marked && !newlyMarked.empty()) {
        selected = newlyMarked;
    }
    marked = newlyMarked;
    if (boards.count(selected) == 0) {
        selected.clear();
    }
    scenario = reading;
    problem.clear();
}

std::string Bench::getListing() const
{
    if (!problem.empty()) {
        throw Refusal(problem);
    }
    std::string listing = "Boards connected: " + std::to_string(boards.size()) + "\n";
    for (const BoardSetup& setup : scenario.boards) {
        listing += getLine(setup, !selected.empty() && setup.name == selected) + "\n";
    }
    return listing;
}

void Bench::select(long number)
{
    if (number < 0 || number >= static_cast<long>(boards.size())) {
        throw Refusal(boards.empty() ? "There is no board"
                                     : "There is no board of this number, they go from 0 to " +
                                           std::to_string(boards.size() - 1));
    }
    selected = std::next(boards.begin(), number)->first;
}

Board& Bench::getSelected()
{
    const auto board = boards.find(selected);
    if (board == boards.end()) {
        throw Refusal("No board selected");
    }
    return board->second;
}

} // namespace Simulator
