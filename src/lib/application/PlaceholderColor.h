#ifndef APPLICATION_PLACEHOLDERCOLOR_H
#define APPLICATION_PLACEHOLDERCOLOR_H

#include <QObject>

class QLineEdit;

namespace Zandu
{

/// Keeps the placeholder of a field lighter than its text, in every scheme of the theme.
///
/// The style sheet gives both the colour of the text: an empty field looks as if somebody had
/// filled it in.
class PlaceholderColor : public QObject
{
    Q_OBJECT

public:
    /// The field owns it.
    explicit PlaceholderColor(QLineEdit* styledField);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();

    QLineEdit* const field;
};

} // namespace Zandu

#endif
