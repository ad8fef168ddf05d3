#include "TableReader.h"

#include "ScenarioError.h"

#include <cmath>
#include <utility>

namespace Simulator
{

namespace
{

bool isOneLine(const std::string& text)
{
    return text.find_first_of("\r\n") == std::string::npos;
}

} // namespace

TableReader::TableReader(const toml::table& source, std::string title, std::string file)
    : table(&source)
    , name(std::move(title))
    , path(std::move(file))
{
}

bool TableReader::has(const std::string& key) const
{
    return table->contains(key);
}

std::string TableReader::getText(const std::string& key, const std::string& fallback)
{
    const toml::node* node = take(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto text = node->value_exact<std::string>();
    if (!text) {
        refuseAt(*node, "'" + key + "' must be a text between quotes");
    }
    return *text;
}

std::string TableReader::getRequiredText(const std::string& key)
{
    if (!has(key)) {
        refuse(key, name + " needs the key '" + key + "'");
    }
    return getText(key, {});
}

std::string TableReader::getLine(const std::string& key, const std::string& fallback)
{
    std::string line = getText(key, fallback);
    if (!isOneLine(line)) {
        refuse(key, "'" + key + "' must not hold a line break");
    }
    return line;
}

std::vector<std::string> TableReader::getLines(const std::string& key)
{
    std::vector<std::string> lines;
    const toml::array* array = takeArray(key, "texts");
    if (array == nullptr) {
        return lines;
    }
    for (const toml::node& node : *array) {
        const auto line = node.value_exact<std::string>();
        if (!line || !isOneLine(*line)) {
            refuseAt(node, "'" + key + "' must be a list of texts without line breaks");
        }
        lines.push_back(*line);
    }
    return lines;
}

bool TableReader::getFlag(const std::string& key, bool fallback)
{
    const toml::node* node = take(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto flag = node->value_exact<bool>();
    if (!flag) {
        refuseAt(*node, "'" + key + "' must be true or false");
    }
    return *flag;
}

double TableReader::getNumber(const std::string& key, double fallback)
{
    const toml::node* node = take(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto number = node->value<double>();
    if (!node->is_number() || !number || !std::isfinite(*number) || *number < 0) {
        refuseAt(*node, "'" + key + "' must be a number, 0 or more");
    }
    return *number;
}

long TableReader::getInteger(const std::string& key, long fallback, long minimum, long maximum)
{
    const toml::node* node = take(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto integer = node->value_exact<int64_t>();
    if (!integer || *integer < minimum || *integer > maximum) {
        refuseAt(*node, "'" + key + "' must be a whole number from " + std::to_string(minimum) +
                            " to " + std::to_string(maximum));
    }
    return static_cast<long>(*integer);
}

std::vector<long> TableReader::getIntegers(const std::string& key)
{
    std::vector<long> integers;
    const toml::array* array = takeArray(key, "whole numbers");
    if (array == nullptr) {
        return integers;
    }
    for (const toml::node& node : *array) {
        const auto integer = node.value_exact<int64_t>();
        if (!integer) {
            refuseAt(node, "'" + key + "' must be a list of whole numbers");
        }
        integers.push_back(static_cast<long>(*integer));
    }
    return integers;
}

std::vector<TableReader> TableReader::getTables(const std::string& key,
                                                const std::string& memberTitle)
{
    std::vector<TableReader> readers;
    const toml::array* array = takeArray(key, "tables");
    if (array == nullptr) {
        return readers;
    }
    const std::string rule =
        "'" + key + "' must be a list of tables, each begun by [[" + key + "]]";
    for (const toml::node& node : *array) {
        if (!node.is_table()) {
            refuseAt(node, rule);
        }
        readers.emplace_back(*node.as_table(), memberTitle, path);
    }
    return readers;
}

void TableReader::finish() const
{
    for (const auto& [key, node] : *table) {
        const std::string text(key.str());
        if (taken.count(text) == 0) {
            refuseAt(node, name + " has no key '" + text + "'");
        }
    }
}

void TableReader::refuse(const std::string& key, const std::string& reason) const
{
    const toml::node* node = table->get(key);
    refuseAt(node == nullptr ? *table : *node, reason);
}

const toml::node* TableReader::take(const std::string& key)
{
    taken.insert(key);
    return table->get(key);
}

const toml::array* TableReader::takeArray(const std::string& key, const std::string& members)
{
    const toml::node* node = take(key);
    if (node != nullptr && !node->is_array()) {
        refuseAt(*node, "'" + key + "' must be a list of " + members);
    }
    return node == nullptr ? nullptr : node->as_array();
}

void TableReader::refuseAt(const toml::node& node, const std::string& reason) const
{
    throw ScenarioError(path, node.source().begin.line, reason);
}

} // namespace Simulator
