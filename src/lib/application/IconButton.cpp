#include <application/IconButton.h>

#include <foundation/Theme.h>

#include <QToolButton>

namespace Zandu
{

namespace
{

constexpr int iconSize = 16;

} // namespace

QToolButton* createIconButton(const char* iconName, const QString& name, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setIcon(Orvex::theme->getIcon(iconName));
    button->setIconSize(QSize(iconSize, iconSize));
    button->setAutoRaise(true);
    button->setToolTip(name);
    button->setAccessibleName(name);
    return button;
}

} // namespace Zandu
