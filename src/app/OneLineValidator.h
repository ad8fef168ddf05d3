#ifndef APP_ONELINEVALIDATOR_H
#define APP_ONELINEVALIDATOR_H

#include <QValidator>

namespace Kestoboard
{

/// Keeps the text of a field to one line: what is pasted, dropped or set gets a blank in place of
/// each line break, which is how the field shows it anyway. A command made of the text stays one
/// command.
class OneLineValidator : public QValidator
{
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& text, int& position) const override;
};

} // namespace Kestoboard

#endif
