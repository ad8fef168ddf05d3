#include "app/OneLineValidator.h"

#include <foundation/PlainText.h>

namespace Kestoboard
{

QValidator::State OneLineValidator::validate(QString& text, int& /*position*/) const
{
    for (QChar& character : text) {
        if (!Orvex::isOneLine(QString(character))) {
            character = QLatin1Char(' ');
        }
    }
    return Acceptable;
}

} // namespace Kestoboard
