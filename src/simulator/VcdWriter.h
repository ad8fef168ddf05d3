#ifndef SIMULATOR_VCD_WRITER_H
#define SIMULATOR_VCD_WRITER_H

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace Simulator
{

/// Writes a value change dump, the text format that waveform viewers open: the header, all signals
/// with their first values, then the changes in the order of time.
class VcdWriter
{
public:
    /// The unit of all times is a picosecond. The stream must outlive the writer.
    explicit VcdWriter(std::ostream& target);

    void writeHeader(const std::string& comment);

    /// Announces a signal of 1 to 64 bits; all signals come before begin(). Returns its number.
    std::size_t addSignal(const std::string& name, unsigned width);

    /// Ends the header and dumps the first values, one for each signal, at the time 0.
    void begin(const std::vector<std::uint64_t>& values);

    /// `time` must not be before that of the last call.
    void change(std::uint64_t time, std::size_t signal, std::uint64_t value);

    /// Marks the end of the recording.
    void end(std::uint64_t time);

private:
    void writeTime(std::uint64_t time);
    void writeValue(std::size_t signal, std::uint64_t value);

    std::ostream& stream;
    std::vector<unsigned> widths;
    std::uint64_t lastTime = 0;
};

} // namespace Simulator

#endif
