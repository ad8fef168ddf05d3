#include "app/MessageBox.h"

#include <foundation/PlainText.h>

#include <QMessageBox>

namespace Kestoboard
{

void setWords(QMessageBox* box, const QString& sentence, const QString& advice)
{
    box->setText(Orvex::getLiteral(sentence));
    box->setInformativeText(Orvex::getLiteral(advice));
}

} // namespace Kestoboard
