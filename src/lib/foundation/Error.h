#ifndef FOUNDATION_ERROR_H
#define FOUNDATION_ERROR_H

#include <foundation/Exception.h>
#include <foundation/Tracker.h>

namespace Orvex
{

/// A failure that knows the place in the program where it was thrown.
class ORVEX_EXPORT Error : public Exception
{
public:
    explicit Error(const std::string& text);
    Error(const Error&) = default;
    Error& operator=(const Error&) = default;
    ~Error() override;

    /// Stores the place: a bare function name (for a constructor that of its class), the path of
    /// the source file without its suffix, and the line. Throwing the result would slice the
    /// object to an Error; Orvex::raise locates and throws the exact class.
    Error& locate(const std::string& functionName, const std::string& sourceFile,
                  unsigned long sourceLine);

    /// Empty until the failure was located.
    const std::string& getFunction() const;
    /// Empty until the failure was located.
    const std::string& getFile() const;
    /// 0 until the failure was located.
    unsigned long getLine() const;
    const Tracker& getTracker() const;

private:
    std::string function;
    std::string file;
    unsigned long line = 0;
    Tracker tracker;
};

} // namespace Orvex

#endif
