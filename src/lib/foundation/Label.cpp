#include <foundation/Label.h>

#include <foundation/Text.h>

namespace Orvex
{

Label Label::create(const std::string& text)
{
    return Label(text);
}

Label::Label(const std::string& labelText)
    : text(labelText)
{
}

const std::string& Label::getText() const
{
    return text;
}

Label getClassLabel(const std::type_info& type)
{
    const char* name = type.name();
    // Some runtimes mark a name that is known in one library only by a star.
    if (*name == '*') {
        ++name;
    }
    return Label::create(getExternalName(name));
}

} // namespace Orvex
