#include "app/StateIcon.h"

#include <foundation/Theme.h>

namespace Kestoboard
{

namespace
{

const int iconSize = 16;

} // namespace

StateIcon::StateIcon(QWidget* parent)
    : QLabel(parent)
{
    setFixedSize(iconSize, iconSize);
}

void StateIcon::showIcon(const std::string& name)
{
    const QPixmap wanted = Orvex::theme->getIcon(name).pixmap(iconSize, iconSize);
    const QPixmap* const shown = pixmap();
    if (shown == nullptr || shown->cacheKey() != wanted.cacheKey()) {
        setPixmap(wanted);
    }
}

} // namespace Kestoboard
