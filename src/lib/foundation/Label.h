#ifndef FOUNDATION_LABEL_H
#define FOUNDATION_LABEL_H

#include <foundation/Export.h>

#include <string>
#include <typeinfo>

namespace Orvex
{

/// What a driver of the collection family calls itself.
class ORVEX_EXPORT Label
{
public:
    static Label create(const std::string& text);

    const std::string& getText() const;

private:
    explicit Label(const std::string& labelText);

    std::string text;
};

/// The readable name of a class, for an object the one of its run-time type.
ORVEX_EXPORT Label getClassLabel(const std::type_info& type);

} // namespace Orvex

#endif
