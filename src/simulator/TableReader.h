#ifndef SIMULATOR_TABLE_READER_H
#define SIMULATOR_TABLE_READER_H

#include <toml++/toml.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Simulator
{

/// Reads one table of a scenario file and checks each value as it is taken. Every operation throws
/// ScenarioError, which names the file, the line and the reason. The table must outlive the reader.
class TableReader
{
public:
    /// `title` is what messages call the table, such as "a [[board]]".
    TableReader(const toml::table& source, std::string title, std::string file);

    bool has(const std::string& key) const;

    std::string getText(const std::string& key, const std::string& fallback);
    std::string getRequiredText(const std::string& key);
    /// A text without line breaks, which stands for one line or a part of it.
    std::string getLine(const std::string& key, const std::string& fallback);
    std::vector<std::string> getLines(const std::string& key);
    bool getFlag(const std::string& key, bool fallback);
    /// A finite number that is not negative.
    double getNumber(const std::string& key, double fallback);
    long getInteger(const std::string& key, long fallback, long minimum, long maximum);
    std::vector<long> getIntegers(const std::string& key);
    /// The tables of an array of tables; `memberTitle` becomes their title.
    std::vector<TableReader> getTables(const std::string& key, const std::string& memberTitle);

    /// To be called last: refuses the keys that nobody asked for.
    void finish() const;
    /// Throws ScenarioError at the line of `key`, or of the table when it does not hold the key.
    [[noreturn]] void refuse(const std::string& key, const std::string& reason) const;

private:
    const toml::node* take(const std::string& key);
    const toml::array* takeArray(const std::string& key, const std::string& members);
    [[noreturn]] void refuseAt(const toml::node& node, const std::string& reason) const;

    const toml::table* table;
    std::string name;
    std::string path;
    std::set<std::string> taken;
};

} // namespace Simulator

#endif
