#ifndef SIMULATOR_JOURNAL_H
#define SIMULATOR_JOURNAL_H

#include <string>

namespace Simulator
{

/// The file that takes every line received, for tests that ask what reached the tool. A line is in
/// the file when append() returns, so also before anything is answered to it.
class Journal
{
public:
    /// Writes to `path` from now on, to nothing when it is empty.
    /// Throws Refusal with the system's reason when the file cannot be opened; the old one stays.
    void open(const std::string& path);

    /// The file is opened for each line, so that it can be renamed or removed at any time. A line
    /// that cannot be written is lost; open() tells of it at the next listing.
    void append(const std::string& line) const;

private:
    std::string file;
};

} // namespace Simulator

#endif
