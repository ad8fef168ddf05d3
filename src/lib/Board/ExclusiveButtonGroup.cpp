#include <Board/ExclusiveButtonGroup.h>

#include <QAbstractButton>
#include <QButtonGroup>

#include <limits>

namespace Board
{

QButtonGroup* createExclusiveButtonGroup()
{
    auto* group = new QButtonGroup;
    group->setExclusive(true);
    return group;
}

QAbstractButton* getButton(const QButtonGroup& group, unsigned long id)
{
    if (id > static_cast<unsigned long>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    return group.button(static_cast<int>(id));
}

} // namespace Board
