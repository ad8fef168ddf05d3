#ifndef BOARD_RECENTLOADLIST_H
#define BOARD_RECENTLOADLIST_H

#include <QStringList>

namespace Board
{

/// The full paths of the files that were last loaded, the most recent first, as the application's
/// settings keep them. Files that have gone are among them.
QStringList getRecentLoadList();

/// Puts a path at the front of the stored list, once, and drops the oldest beyond ten.
void addRecentLoad(const QString& path);

} // namespace Board

#endif
