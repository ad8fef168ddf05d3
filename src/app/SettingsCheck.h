#ifndef APP_SETTINGSCHECK_H
#define APP_SETTINGSCHECK_H

#include <QStringList>

namespace Kestoboard
{

/// Looks through the settings before anybody else reads them: a file that cannot be understood is
/// put aside under its name with ".bad", or with a number behind that, and values that cannot be
/// used are removed, so that the first ones count.
///
/// Returns what the person is to be told, a sentence each; nothing when all is well.
QStringList checkSettings();

} // namespace Kestoboard

#endif
