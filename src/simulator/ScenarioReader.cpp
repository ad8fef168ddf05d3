#include "ScenarioReader.h"

#include "FaultReader.h"
#include "InputFile.h"
#include "Refusal.h"
#include "ScenarioError.h"
#include "TableReader.h"
#include "Words.h"

#include <cstdio>
#include <filesystem>
#include <set>

namespace Simulator
{

namespace
{

// What makes a line of the listing a board's, and where the name stands in it.
const std::string identifierMarker = "0x534B";
constexpr std::size_t wordsBeforeName = 2;
constexpr std::size_t longestName = 6;

constexpr long largestCounter = 1'000'000'000;
constexpr long largestStatus = 255;

std::string readText(const std::string& path)
{
    std::string text;
    try {
        readThrough(path, [&text](std::string_view block) { text += block; });
    } catch (const Refusal& refusal) {
        throw ScenarioError(path, 0, refusal.what());
    }
    return text;
}

toml::table parse(const std::string& text, const std::string& path)
{
    try {
        return toml::parse(text, path);
    } catch (const toml::parse_error& failure) {
        throw ScenarioError(path, failure.source().begin.line, std::string(failure.description()));
    }
}

ChannelSetup readChannel(TableReader& reader)
{
    ChannelSetup channel;
    channel.name = reader.getLine("name", {});
    if (channel.name.empty()) {
        reader.refuse("name", "A channel needs a name");
    }
    if (reader.has("voltage")) {
        channel.voltage = reader.getNumber("voltage", 0);
    }
    if (reader.has("current")) {
        channel.current = reader.getNumber("current", 0);
    }
    channel.values = reader.getLines("values");
    if (reader.has("value")) {
        channel.values.push_back(reader.getLine("value", {}));
    }
    const bool supply = channel.voltage || channel.current;
    if (supply == !channel.values.empty() || (reader.has("value") && reader.has("values"))) {
        reader.refuse("name", "A channel needs either 'voltage' and 'current', or 'value', or "
                              "'values'");
    }
    channel.drifting = reader.getFlag("drift", supply);
    reader.finish();
    return channel;
}

ForceBit readForceBit(TableReader& reader)
{
    const std::string bit = reader.getText("force_bit", "clear");
    if (bit == "clear") {
        return ForceBit::Clear;
    }
    if (bit == "set") {
        return ForceBit::Set;
    }
    if (bit == "unreadable") {
        return ForceBit::Unreadable;
    }
    reader.refuse("force_bit", "'force_bit' must be \"set\", \"clear\" or \"unreadable\"");
}

bool readCaptureRefused(TableReader& reader)
{
    const std::string capture = reader.getText("capture", "ok");
    if (capture != "ok" && capture != "refused") {
        reader.refuse("capture", "'capture' must be \"ok\" or \"refused\"");
    }
    return capture == "refused";
}

std::array<long, 3> readCounters(TableReader& reader)
{
    std::array<long, 3> counters{};
    if (!reader.has("counters")) {
        return counters;
    }
    const std::vector<long> numbers = reader.getIntegers("counters");
    bool valid = numbers.size() == counters.size();
    for (std::size_t i = 0; valid && i < counters.size(); ++i) {
        counters[i] = numbers[i];
        valid = numbers[i] >= 0 && numbers[i] <= largestCounter;
    }
    if (!valid) {
        reader.refuse("counters", "'counters' must be three whole numbers, 0 or more");
    }
    return counters;
}

// Boards are told apart by their names as a reader of the listing gets them, and a listing is read
// word by word.
void readName(TableReader& reader, BoardSetup& board)
{
    if (reader.has("raw_line")) {
        board.rawLine = reader.getLine("raw_line", {});
    }
    if (board.rawLine && !reader.has("name")) {
        const bool isBoard = board.rawLine->find(identifierMarker) != std::string::npos;
        const auto words = isBoard ? getWords(*board.rawLine) : std::vector<std::string>();
        board.name = joinWords(words, wordsBeforeName, longestName);
        return;
    }
    board.name = reader.getLine("name", {});
    const std::vector<std::string> words = getWords(board.name);
    if (words.empty()) {
        reader.refuse("name", "A board needs a name");
    }
    if (!board.rawLine && words.size() > longestName) {
        reader.refuse("name", "The name of a board has at most six words");
    }
    if (board.name != joinWords(words, 0, words.size())) {
        reader.refuse("name", "The words of a name stand one blank apart");
    }
}

std::string readIdentifier(TableReader& reader, std::size_t position)
{
    char fallback[16];
    std::snprintf(fallback, sizeof fallback, "0x534B%04zX", (position + 1) & 0xFFFF);
    std::string identifier = reader.getLine("identifier", fallback);
    const bool valid = identifier.size() == identifierMarker.size() + 4 &&
                       identifier.compare(0, identifierMarker.size(), identifierMarker) == 0 &&
                       identifier.find_first_not_of("0123456789ABCDEF", 2) == std::string::npos;
    if (!valid) {
        reader.refuse("identifier", "'identifier' must be 0x534B and four hexadecimal digits");
    }
    return identifier;
}

BoardSetup readBoard(TableReader& reader, std::size_t position)
{
    BoardSetup board;
    readName(reader, board);
    board.identifier = readIdentifier(reader, position);
    board.mode = reader.getLine("mode", board.mode);
    board.modeLocked = reader.getFlag("mode_locked", board.modeLocked);
    board.forceBit = readForceBit(reader);
    board.captureRefused = readCaptureRefused(reader);
    board.selected = reader.getFlag("selected", false);
    board.loadSecondsPerMb = reader.getNumber("load_seconds_per_mb", board.loadSecondsPerMb);
    board.flashSecondsPerMb = reader.getNumber("flash_seconds_per_mb", board.flashSecondsPerMb);
    board.counters = readCounters(reader);
    for (TableReader& channel : reader.getTables("channel", "A channel")) {
        board.channels.push_back(readChannel(channel));
    }
    reader.finish();
    return board;
}

std::vector<BoardSetup> readBoards(TableReader& reader)
{
    std::vector<BoardSetup> boards;
    std::set<std::string> names;
    bool selected = false;
    for (TableReader& table : reader.getTables("board", "A board")) {
        const BoardSetup board = readBoard(table, boards.size());
        if (!names.insert(board.name).second && !board.rawLine) {
            table.refuse("name", "There are two boards with the name '" + board.name + "'");
        }
        if (board.selected && selected) {
            table.refuse("selected", "Only one board can be selected");
        }
        selected = selected || board.selected;
        boards.push_back(board);
    }
    return boards;
}

} // namespace

Scenario parseScenario(const std::string& text, const std::string& path)
{
    const toml::table table = parse(text, path);
    const auto folder = std::filesystem::path(path).parent_path();
    TableReader reader(table, "A scenario", path);

    Scenario scenario;
    const std::string journal = reader.getText("journal", {});
    scenario.journal = journal.empty() ? journal : (folder / journal).string();
    scenario.state = folder / reader.getText("state", Scenario::getDefaultState());
    scenario.timeScale = reader.getNumber("time_scale", scenario.timeScale);
    scenario.startText = reader.getText("start_text", {});
    if (reader.has("start_exit")) {
        scenario.startExit = static_cast<int>(reader.getInteger("start_exit", 0, 0, largestStatus));
    }
    scenario.boards = readBoards(reader);
    for (TableReader& fault : reader.getTables("fault", "A fault")) {
        scenario.faults.push_back(readFault(fault, folder));
    }
    reader.finish();
    return scenario;
}

Scenario readScenario(const std::string& path)
{
    return parseScenario(readText(path), path);
}

} // namespace Simulator
