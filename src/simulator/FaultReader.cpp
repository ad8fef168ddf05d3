#include "FaultReader.h"

#include "TableReader.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

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

void readPieces(TableReader& reader, FaultSetup& fault)
{
    fault.at = reader.getIntegers("at");
    fault.every = reader.getInteger("every", 0, 1, largestAnswer);
    fault.pauseMs = readMs(reader, "pause_ms");
    if (fault.at.empty() && fault.every == 0) {
        reader.refuse("at", "A split needs 'at' or 'every'");
    }
}

void readDetails(TableReader& reader, const std::string& folder, FaultSetup& fault)
{
    switch (fault.kind) {
    case FaultKind::Late:
        fault.delayMs = reader.getInteger("delay_ms", 1000, 0, longestDelayMs);
        break;
    case FaultKind::Hold:
        fault.file = std::filesystem::path(folder) / reader.getRequiredText("file");
        break;
    case FaultKind::Refused:
        fault.text = reader.getLine("message", "Refused by the board");
        break;
    case FaultKind::Split:
        readPieces(reader, fault);
        break;
    case FaultKind::Nul:
        fault.at = reader.getIntegers("at");
        break;
    case FaultKind::Garbage:
        fault.bytes = reader.getInteger("bytes", defaultNoise, 1, largestAnswer);
        break;
    case FaultKind::Large:
        fault.bytes = reader.getInteger("bytes", 0, 1, largestAnswer);
        if (fault.bytes == 0) {
            reader.refuse("bytes", "A large answer needs 'bytes'");
        }
        break;
    case FaultKind::After:
        fault.text = readRawText(reader);
        fault.delayMs = readMs(reader, "delay_ms");
        break;
    case FaultKind::Before:
    case FaultKind::Stdout:
    case FaultKind::Reply:
        fault.text = readRawText(reader);
        break;
    case FaultKind::Exit:
        fault.number = reader.getInteger("status", 1, 0, largestStatus);
        fault.text = reader.getText("text", {});
        break;
    case FaultKind::Kill:
        fault.number = reader.getInteger("signal", SIGKILL, 1, SIGRTMAX);
        fault.text = reader.getText("text", {});
        break;
    case FaultKind::Never:
    case FaultKind::CloseStdin:
    case FaultKind::CloseStderr:
        break;
    }
}

} // namespace

FaultSetup readFault(TableReader& reader, const std::string& folder)
{
    FaultSetup fault;
    const std::string name = reader.getRequiredText("kind");
    const auto kind = getFaultKind(name);
    if (!kind) {
        reader.refuse("kind", "There is no fault of the kind '" + name + "'");
    }
    fault.kind = *kind;
    fault.command = reader.getLine("command", {});
    fault.note = reader.getText("note", {});
    fault.skip = reader.getInteger("skip", 0, 0, mostLines);
    fault.times = reader.getInteger("times", 1, 0, mostLines);
    readDetails(reader, folder, fault);
    reader.finish();
    return fault;
}

} // namespace Simulator
