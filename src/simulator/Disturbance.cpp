#include "Disturbance.h"

#include "Replies.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <random>
#include <set>
#include <unistd.h>
#include <utility>

namespace Simulator
{

namespace
{

// Where the answer is cut into pieces: byte offsets inside it.
using Cuts = std::set<std::size_t>;

void addCut(Cuts& cuts, long offset, std::size_t size)
{
    const long position = offset < 0 ? static_cast<long>(size) + offset : offset;
    if (position > 0 && position < static_cast<long>(size)) {
        cuts.insert(static_cast<std::size_t>(position));
    }
}

void addCuts(Cuts& cuts, const FaultSetup& split, std::size_t size)
{
    for (const long offset : split.at) {
        addCut(cuts, offset, size);
    }
    for (long offset = split.every; offset > 0 && offset < static_cast<long>(size);
         offset += split.every) {
        addCut(cuts, offset, size);
    }
}

std::vector<std::string> getPieces(const std::string& answer, const Cuts& cuts)
{
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (const std::size_t cut : cuts) {
        pieces.push_back(answer.substr(begin, cut - begin));
        begin = cut;
    }
    pieces.push_back(answer.substr(begin));
    return pieces;
}

// The same noise each time, so that a failing test can be repeated. Neither NUL bytes, which have a
// fault of their own, nor line ends, which would make several lines of it.
std::string getNoise(long size)
{
    std::mt19937 generator(1);
    std::string noise;
    while (noise.size() < static_cast<std::size_t>(size)) {
        const char byte = static_cast<char>(generator() & 0xFFU);
        if (byte != '\0' && byte != '\n') {
            noise += byte;
        }
    }
    return noise;
}

void makeGarbage(std::string& answer, long size)
{
    answer.replace(0, getMarkOffset(answer), getNoise(size) + "\n");
}

void enlarge(std::string& answer, long size)
{
    const std::string line = "This line fills the answer up and means nothing to anybody at all.\n";
    const auto wanted = static_cast<std::size_t>(size);
    std::string filler;
    filler.reserve(wanted + line.size());
    while (answer.size() + filler.size() < wanted) {
        filler += line;
    }
    answer.insert(getMarkOffset(answer), filler);
}

// Without an offset the byte stands before the mark, which then comes by itself: a reader that
// takes each write up to its first NUL byte still gets the mark.
void insertNuls(std::string& answer, const FaultSetup& fault, Cuts& cuts)
{
    const std::string nul(1, '\0');
    if (fault.at.empty()) {
        const std::size_t mark = getMarkOffset(answer);
        answer.insert(mark, nul);
        addCut(cuts, static_cast<long>(mark + 1), answer.size());
        return;
    }
    const auto size = static_cast<long>(answer.size());
    std::vector<long> offsets;
    for (const long offset : fault.at) {
        offsets.push_back(std::clamp(offset < 0 ? size + offset : offset, 0L, size));
    }
    std::sort(offsets.rbegin(), offsets.rend());
    for (const long offset : offsets) {
        answer.insert(static_cast<std::size_t>(offset), nul);
    }
}

} // namespace

Disturbance::Disturbance(std::vector<FaultSetup> due, const Output& errorOutput,
                         const Patience& waiting)
    : faults(std::move(due))
    , output(errorOutput)
    , patience(waiting)
    , writer(errorOutput, waiting)
{
}

void Disturbance::begin() const
{
    for (const FaultSetup& fault : faults) {
        perform(fault);
    }
}

std::optional<std::string> Disturbance::getSubstitute() const
{
    for (const FaultSetup& fault : faults) {
        if (fault.kind == FaultKind::Refused) {
            return getFailure(fault.text);
        }
        if (fault.kind == FaultKind::Reply) {
            return fault.text;
        }
        if (fault.kind == FaultKind::Never) {
            return std::string();
        }
    }
    return std::nullopt;
}

void Disturbance::deliver(const std::string& answer) const
{
    if (answer.empty()) {
        return;
    }
    std::string spoilt = answer;
    Cuts cuts;
    std::chrono::milliseconds pause(0);
    for (const FaultSetup& fault : faults) {
        if (fault.kind == FaultKind::Garbage) {
            makeGarbage(spoilt, fault.bytes);
        } else if (fault.kind == FaultKind::Large) {
            enlarge(spoilt, fault.bytes);
        } else if (fault.kind == FaultKind::Nul) {
            insertNuls(spoilt, fault, cuts);
        } else if (fault.kind == FaultKind::Split) {
            addCuts(cuts, fault, spoilt.size());
            pause = std::chrono::milliseconds(fault.pauseMs);
        }
    }
    if (cuts.empty()) {
        writer.write(spoilt);
    } else {
        writer.writePieces(getPieces(spoilt, cuts), pause);
    }
    for (const FaultSetup& fault : faults) {
        if (fault.kind == FaultKind::After) {
            patience.waitForReader(output);
            patience.wait(std::chrono::milliseconds(fault.delayMs));
            output.write(fault.text);
        }
    }
}

bool Disturbance::closesInput() const
{
    return std::any_of(faults.begin(), faults.end(),
                       [](const FaultSetup& fault) { return fault.kind == FaultKind::CloseStdin; });
}

void Disturbance::perform(const FaultSetup& fault) const
{
    switch (fault.kind) {
    case FaultKind::Late:
        patience.wait(std::chrono::milliseconds(fault.delayMs));
        break;
    case FaultKind::Hold:
        patience.waitForFile(fault.file);
        break;
    case FaultKind::Before:
        sendAhead(fault.text);
        break;
    case FaultKind::Stdout:
        Output(STDOUT_FILENO).write(fault.text);
        break;
    case FaultKind::Exit:
        output.write(fault.text);
        std::exit(static_cast<int>(fault.number));
    case FaultKind::Kill:
        output.write(fault.text);
        std::raise(static_cast<int>(fault.number));
        break;
    case FaultKind::CloseStdin:
        disconnect(STDIN_FILENO);
        break;
    case FaultKind::CloseStderr:
        disconnect(STDERR_FILENO);
        break;
    case FaultKind::Never:
    case FaultKind::Refused:
    case FaultKind::Split:
    case FaultKind::Nul:
    case FaultKind::Garbage:
    case FaultKind::After:
    case FaultKind::Large:
    case FaultKind::Reply:
        break;
    }
}

void Disturbance::sendAhead(const std::string& text) const
{
    output.write(text);
    patience.waitForReader(output);
}

} // namespace Simulator
