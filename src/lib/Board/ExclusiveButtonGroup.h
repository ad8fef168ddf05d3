#ifndef BOARD_EXCLUSIVEBUTTONGROUP_H
#define BOARD_EXCLUSIVEBUTTONGROUP_H

class QAbstractButton;
class QButtonGroup;

namespace Board
{

/// An exclusive button group without a parent. Nobody deletes it: the groups of the page containers
/// live until the process ends.
QButtonGroup* createExclusiveButtonGroup();

/// The button of that id, or null, also for a number that no id can have.
QAbstractButton* getButton(const QButtonGroup& group, unsigned long id);

} // namespace Board

#endif
