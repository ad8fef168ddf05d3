#include <Board/RecentLoadList.h>

#include <QSettings>
#include <QVariant>

namespace Board
{

namespace
{

const int maximumRecentLoads = 10;

QString getKey()
{
    return QStringLiteral("recentLoadList");
}

} // namespace

QStringList getRecentLoadList()
{
    return QSettings().value(getKey(), QVariant()).toStringList();
}

void addRecentLoad(const QString& path)
{
    QStringList paths = getRecentLoadList();
    paths.removeAll(path);
    paths.prepend(path);
    while (paths.size() > maximumRecentLoads) {
        paths.removeLast();
    }
    QSettings settings;
    settings.setValue(getKey(), paths);
    settings.sync();
}

} // namespace Board
