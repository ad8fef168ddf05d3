#include "app/FirstGeometry.h"

namespace Kestoboard
{

namespace
{

const QSize firstSize(1024, 768);

} // namespace

FirstGeometry getFirstGeometry(const QRect& available, const QSize& least, const QSize& frame)
{
    const QSize room = available.isValid() ? available.size() - frame : firstSize;
    const QSize size = firstSize.boundedTo(room).expandedTo(least);
    const QPoint place = available.center() - QRect(QPoint(), size + frame).center();
    return {QPoint(qMax(available.left(), place.x()), qMax(available.top(), place.y())), size};
}

} // namespace Kestoboard
