#include <Board/FormLabel.h>

#include <QLabel>
#include <QString>
#include <QWidget>

namespace Board
{

QLabel* createFormLabel(const QString& text, QWidget* control)
{
    auto* label = new QLabel(text, control->parentWidget());
    label->setBuddy(control);
    control->setAccessibleName(text);
    return label;
}

} // namespace Board
