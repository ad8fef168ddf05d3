#ifndef APPLICATION_ICONBUTTON_H
#define APPLICATION_ICONBUTTON_H

#include <QString>

class QToolButton;
class QWidget;

namespace Zandu
{

/// A small flat button with an icon of the theme; `name` is its tool tip and its accessible name.
QToolButton* createIconButton(const char* iconName, const QString& name, QWidget* parent);

} // namespace Zandu

#endif
