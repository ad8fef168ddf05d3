#ifndef FOUNDATION_EXCEPTION_H
#define FOUNDATION_EXCEPTION_H

#include <foundation/Export.h>

#include <list>
#include <string>

namespace Orvex
{

/// The root of every failure of the program: a message for a person, and named details.
///
/// Failures are thrown by value as their exact class and caught by reference; a copy keeps
/// everything. They stay on the thread that threw them.
class ORVEX_EXPORT Exception
{
public:
    explicit Exception(const std::string& text);
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;
    virtual ~Exception();

    /// The text for a person.
    virtual std::string getMessage() const;
    /// The same text set in by a number of steps of two blanks, for plain text output.
    virtual std::string getMessage(unsigned long steps) const;
    /// The name of the class that was thrown.
    virtual std::string _getLabel() const;

    /// The names of the details in the order in which they were added.
    const std::list<std::string>& getDetailNames() const;
    /// The values of the details, one for each name.
    const std::list<std::string>& getDetailValues() const;

protected:
    void addDetail(const std::string& name, const std::string& value);

private:
    std::string message;
    std::list<std::string> detailNames;
    std::list<std::string> detailValues;
};

} // namespace Orvex

#endif
