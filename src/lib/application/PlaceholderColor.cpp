#include <application/PlaceholderColor.h>

#include <foundation/Theme.h>

#include <QEvent>
#include <QLineEdit>
#include <QPalette>

namespace Zandu
{

PlaceholderColor::PlaceholderColor(QLineEdit* styledField)
    : QObject(styledField)
    , field(styledField)
{
    field->installEventFilter(this);
    apply();
}

bool PlaceholderColor::eventFilter(QObject* watched, QEvent* event)
{
    // The style sheet has its say before the field is told.
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::PaletteChange ||
        event->type() == QEvent::Show) {
        apply();
    }
    return QObject::eventFilter(watched, event);
}

void PlaceholderColor::apply()
{
    const QColor color = Orvex::theme->getColor("text_light");
    QPalette palette = field->palette();
    if (palette.color(QPalette::PlaceholderText) != color) {
        palette.setColor(QPalette::PlaceholderText, color);
        field->setPalette(palette);
    }
}

} // namespace Zandu
