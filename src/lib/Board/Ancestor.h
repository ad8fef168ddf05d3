#ifndef BOARD_ANCESTOR_H
#define BOARD_ANCESTOR_H

#include <QWidget>

namespace Board
{

/// The nearest widget above `widget` that is an `Ancestor`, or null.
///
/// Splitters and stacks take over the widgets that they are given, so a page does not find its
/// container, nor the container its window, by its direct parent.
template <class Ancestor>
Ancestor* getAncestor(const QWidget& widget)
{
    for (QWidget* above = widget.parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto* ancestor = dynamic_cast<Ancestor*>(above)) {
            return ancestor;
        }
    }
    return nullptr;
}

} // namespace Board

#endif
