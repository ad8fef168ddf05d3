#include "MonitorReport.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <functional>

namespace Simulator
{

namespace
{

// Largest deviation from the nominal value, as a part of it.
constexpr double voltageDrift = 0.004;
constexpr double currentDrift = 0.04;
constexpr double otherDrift = 0.02;

constexpr int supplyDecimals = 3;

// Two slow waves that do not repeat together, from -1 to 1. Each channel begins at a place of its
// own, so that they do not move in step.
double getWave(const std::string& seed, unsigned long reading)
{
    const double phase = static_cast<double>(std::hash<std::string>()(seed) % 1000) / 100.0;
    const auto step = static_cast<double>(reading);
    return 0.6 * std::sin(0.35 * step + phase) + 0.4 * std::sin(1.7 * step + 2 * phase);
}

std::string getFixed(double number, int decimals)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    return text;
}

std::string getSupplyValue(double nominal, double drift, const std::string& seed,
                           unsigned long reading, char unit)
{
    return getFixed(nominal * (1 + drift * getWave(seed, reading)), supplyDecimals) + unit;
}

// The number at the head of `value` moves and keeps its number of decimals; the rest stays.
std::string getDrifted(const std::string& value, const std::string& seed, unsigned long reading)
{
    const char* end = value.data() + value.size();
    double nominal = 0;
    const auto parsed = std::from_chars(value.data(), end, nominal, std::chars_format::fixed);
    if (parsed.ec != std::errc() || !std::isfinite(nominal) || std::fabs(nominal) > 1e12) {
        return value;
    }
    const std::string number(value.data(), parsed.ptr);
    const std::size_t point = number.find('.');
    const int decimals =
        point == std::string::npos ? 0 : static_cast<int>(number.size() - point - 1);
    return getFixed(nominal * (1 + otherDrift * getWave(seed, reading)), decimals) +
           std::string(parsed.ptr, end);
}

std::vector<std::string> getValues(const ChannelSetup& channel, unsigned long reading)
{
    std::vector<std::string> values;
    const bool drifting = channel.drifting;
    if (channel.voltage) {
        values.push_back(getSupplyValue(*channel.voltage, drifting ? voltageDrift : 0,
                                        channel.name + "V", reading, 'V'));
    }
    if (channel.current) {
        values.push_back(getSupplyValue(*channel.current, drifting ? currentDrift : 0,
                                        channel.name + "A", reading, 'A'));
    }
    for (const std::string& value : channel.values) {
        values.push_back(drifting ? getDrifted(value, channel.name + value, reading) : value);
    }
    return values;
}

} // namespace

std::string getMonitorReport(const std::vector<ChannelSetup>& channels, unsigned long reading)
{
    std::string report;
    for (const ChannelSetup& channel : channels) {
        report += channel.name + ":";
        for (const std::string& value : getValues(channel, reading)) {
            report += " " + value;
        }
        report += "\n";
    }
    return report;
}

} // namespace Simulator
