#include "VcdWriter.h"

#include <bitset>
#include <ctime>
#include <iomanip>
#include <ostream>

namespace Simulator
{

namespace
{

constexpr std::size_t mostBits = 64;

// Signals are named by printable characters in the body of the file.
std::string getCode(std::size_t signal)
{
    return std::string(1, static_cast<char>('!' + signal));
}

} // namespace

VcdWriter::VcdWriter(std::ostream& target)
    : stream(target)
{
}

void VcdWriter::writeHeader(const std::string& comment)
{
    const std::time_t now = std::time(nullptr);
    std::tm calendar{};
    ::localtime_r(&now, &calendar);
    stream << "$date\n  " << std::put_time(&calendar, "%Y-%m-%d %H:%M:%S") << "\n$end\n"
           << "$version\n  ksscope (simulated)\n$end\n"
           << "$comment\n  " << comment << "\n$end\n"
           << "$timescale 1ps $end\n"
           << "$scope module board $end\n";
}

std::size_t VcdWriter::addSignal(const std::string& name, unsigned width)
{
    stream << "$var wire " << width << " " << getCode(widths.size()) << " " << name;
    if (width > 1) {
        stream << " [" << width - 1 << ":0]";
    }
    stream << " $end\n";
    widths.push_back(width);
    return widths.size() - 1;
}

void VcdWriter::begin(const std::vector<std::uint64_t>& values)
{
    stream << "$upscope $end\n$enddefinitions $end\n#0\n$dumpvars\n";
    for (std::size_t signal = 0; signal < values.size(); ++signal) {
        writeValue(signal, values[signal]);
    }
    stream << "$end\n";
}

void VcdWriter::change(std::uint64_t time, std::size_t signal, std::uint64_t value)
{
    writeTime(time);
    writeValue(signal, value);
}

void VcdWriter::end(std::uint64_t time)
{
    writeTime(time);
}

void VcdWriter::writeTime(std::uint64_t time)
{
    if (time != lastTime) {
        stream << "#" << time << "\n";
        lastTime = time;
    }
}

void VcdWriter::writeValue(std::size_t signal, std::uint64_t value)
{
    const std::string bits = std::bitset<mostBits>(value).to_string();
    const unsigned width = widths.at(signal);
    if (width == 1) {
        stream << bits.back() << getCode(signal) << "\n";
    } else {
        stream << "b" << bits.substr(mostBits - width) << " " << getCode(signal) << "\n";
    }
}

} // namespace Simulator
