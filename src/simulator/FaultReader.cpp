#include "FaultReader.h"

#include "TableReader.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>

namespace Simulator
{

namespace
{

constexpr long longestDelayMs = 3'600'000;
constexpr long largestAnswer = 1'000'000'000;
constexpr long mostLines = 1'000'000'000;
constexpr long largestStatus = 255;
constexpr long defaultNoise = 256;

long readMs(TableReader& reader, const std::string& key)
{
    return reader.getInteger(key, 0, 0, longestDelayMs);
}

// "ff 00 4B" stands for three bytes: the way to bytes that a text of the file cannot hold.
std::string getBytes(TableReader& reader, const std::string& key)
{
    std::string digits;
    for (const char character : reader.getText(key, {})) {
        if (character != ' ') {
            digits += character;
        }
    }
    const bool valid = digits.size() % 2 == 0 &&
                       digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    if (!valid) {
        reader.refuse(key, "'" + key + "' must be bytes of two hexadecimal digits each");
    }
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes += static_cast<char>(std::strtol(digits.substr(i, 2).c_str(), nullptr, 16));
    }
    return bytes;
}

std::string readRawText(TableReader& reader)
{
    if (reader.has("text") == reader.has("hex")) {
        reader.refuse("hex", "This fault needs either 'text' or 'hex'");
    }
    return reader.has("hex") ? getBytes(reader, "hex") : reader.getText("text", {});
}

void readNothing(TableReader& /*reader*/, FaultSetup& /*fault*/) {}

void readLate(TableReader& reader, FaultSetup& fault)
{
    fault.delayMs = reader.getInteger("delay_ms", 1000, 0, longestDelayMs);
}

void readHold(TableReader& reader, FaultSetup& fault)
{
    fault.file = reader.getRequiredText("file");
}

void readRefused(TableReader& reader, FaultSetup& fault)
{
    fault.text = reader.getLine("message", "Refused by the board");
}

void readSplit(TableReader& reader, FaultSetup& fault)
{
    fault.at = reader.getIntegers("at");
    fault.every = reader.getInteger("every", 0, 1, largestAnswer);
    fault.pauseMs = readMs(reader, "pause_ms");
    if (fault.at.empty() && fault.every == 0) {
        reader.refuse("at", "A split needs 'at' or 'every'");
    }
}

void readNul(TableReader& reader, FaultSetup& fault)
{
    fault.at = reader.getIntegers("at");
}

void readGarbage(TableReader& reader, FaultSetup& fault)
{
    fault.bytes = reader.getInteger("bytes", defaultNoise, 1, largestAnswer);
}

void readLarge(TableReader& reader, FaultSetup& fault)
{
    fault.bytes = reader.getInteger("bytes", 0, 1, largestAnswer);
    if (fault.bytes == 0) {
        reader.refuse("bytes", "A large answer needs 'bytes'");
    }
}

void readText(TableReader& reader, FaultSetup& fault)
{
    fault.text = readRawText(reader);
}

void readAfter(TableReader& reader, FaultSetup& fault)
{
    fault.text = readRawText(reader);
    fault.delayMs = readMs(reader, "delay_ms");
}

void readExit(TableReader& reader, FaultSetup& fault)
{
    fault.number = reader.getInteger("status", 1, 0, largestStatus);
    fault.text = reader.getText("text", {});
}

void readKill(TableReader& reader, FaultSetup& fault)
{
    fault.number = reader.getInteger("signal", SIGKILL, 1, SIGRTMAX);
    fault.text = reader.getText("text", {});
}

// The kinds by their names in the file, each with the keys of its own.
struct FaultForm {
    FaultKind kind;
    void (*read)(TableReader& reader, FaultSetup& fault);
};

const std::map<std::string, FaultForm>& getForms()
{
    static const std::map<std::string, FaultForm> forms{
        {"late", {FaultKind::Late, readLate}},
        {"hold", {FaultKind::Hold, readHold}},
        {"never", {FaultKind::Never, readNothing}},
        {"refused", {FaultKind::Refused, readRefused}},
        {"split", {FaultKind::Split, readSplit}},
        {"nul", {FaultKind::Nul, readNul}},
        {"garbage", {FaultKind::Garbage, readGarbage}},
        {"before", {FaultKind::Before, readText}},
        {"after", {FaultKind::After, readAfter}},
        {"large", {FaultKind::Large, readLarge}},
        {"stdout", {FaultKind::Stdout, readText}},
        {"exit", {FaultKind::Exit, readExit}},
        {"kill", {FaultKind::Kill, readKill}},
        {"reply", {FaultKind::Reply, readText}},
        {"close_stdin", {FaultKind::CloseStdin, readNothing}},
        {"close_stderr", {FaultKind::CloseStderr, readNothing}},
    };
    return forms;
}

} // namespace

FaultSetup readFault(TableReader& reader, const std::string& folder)
{
    const std::string kind = reader.getRequiredText("kind");
    const auto form = getForms().find(kind);
    if (form == getForms().end()) {
        reader.refuse("kind", "There is no fault of the kind '" + kind + "'");
    }
    FaultSetup fault;
    fault.kind = form->second.kind;
    fault.command = reader.getLine("command", {});
    fault.note = reader.getText("note", {});
    fault.skip = reader.getInteger("skip", 0, 0, mostLines);
    fault.times = reader.getInteger("times", 1, 0, mostLines);
    form->second.read(reader, fault);
    if (!fault.file.empty()) {
        fault.file = std::filesystem::path(folder) / fault.file;
    }
    reader.finish();
    return fault;
}

} // namespace Simulator
