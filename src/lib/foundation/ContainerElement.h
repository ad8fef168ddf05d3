#ifndef FOUNDATION_CONTAINERELEMENT_H
#define FOUNDATION_CONTAINERELEMENT_H

#include <map>

namespace Orvex
{

/// What a view of a container shows at a position: the element, of a map the mapped value.
template <class Container>
struct ContainerElement {
    using Type = typename Container::value_type;

    static const Type& get(typename Container::const_iterator position) { return *position; }
};

template <class K, class V, class Less>
struct ContainerElement<std::map<K, V, Less>> {
    using Type = V;

    static const Type& get(typename std::map<K, V, Less>::const_iterator position)
    {
        return position->second;
    }
};

} // namespace Orvex

#endif
