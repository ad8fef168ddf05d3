#include <foundation/Text.h>

#include <foundation/OwnedListCollection.h>

#include <QString>

#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <list>
#include <memory>
#include <utility>

namespace Orvex
{

namespace
{

/// The position of the next separator, or the end. Linear in the text for every separator, which
/// std::string::find does not promise.
const char* findSeparator(const char* begin, const char* end, const std::string& separator)
{
    if (separator.empty()) {
        return end;
    }
    const void* const found =
        memmem(begin, static_cast<std::size_t>(end - begin), separator.data(), separator.size());
    return found != nullptr ? static_cast<const char*>(found) : end;
}

} // namespace

std::string getLabel(const QString& text)
{
    return text.toStdString();
}

std::string getLabel(const int& value)
{
    return std::to_string(value);
}

std::string getLabel(unsigned long value)
{
    return std::to_string(value);
}

std::string getLabel(const std::string& text)
{
    return text;
}

Collection<std::string> getSplitted(const std::string& text, const std::string& separator)
{
    std::list<std::string> pieces;
    const char* begin = text.data();
    const char* const end = begin + text.size();
    const char* stop = findSeparator(begin, end, separator);
    while (stop != end) {
        pieces.emplace_back(begin, stop);
        begin = stop + separator.size();
        stop = findSeparator(begin, end, separator);
    }
    pieces.emplace_back(begin, end);
    return OwnedListCollection<std::string>(std::move(pieces));
}

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool isAlphaLess(const std::string& first, const std::string& second)
{
    return first < second;
}

const std::string& getExternalName(const std::string& name)
{
    static thread_local std::string readable;
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> demangled(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    readable = demangled ? demangled.get() : name;
    return readable;
}

} // namespace Orvex
