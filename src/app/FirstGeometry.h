#ifndef APP_FIRSTGEOMETRY_H
#define APP_FIRSTGEOMETRY_H

#include <QPoint>
#include <QRect>
#include <QSize>

namespace Kestoboard
{

/// The place and size of a window that nobody has placed yet: in the middle of the space that a
/// screen has for it, never smaller than `least`.
struct FirstGeometry {
    QPoint place; // of the frame
    QSize size;   // without the frame
};

/// `frame` is what title bar and borders add to the size of the window. On a screen that is too
/// small the title bar stays in reach.
FirstGeometry getFirstGeometry(const QRect& available, const QSize& least, const QSize& frame);

} // namespace Kestoboard

#endif
