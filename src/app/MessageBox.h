#ifndef APP_MESSAGEBOX_H
#define APP_MESSAGEBOX_H

#include <QString>

class QMessageBox;

namespace Kestoboard
{

/// Says what is wrong and what to do in a box. Paths and messages of others stand in both: they
/// show letter for letter, whatever markup they hold.
void setWords(QMessageBox* box, const QString& sentence, const QString& advice);

} // namespace Kestoboard

#endif
