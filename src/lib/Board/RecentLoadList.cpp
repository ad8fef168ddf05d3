#include <Board/RecentLoadList.h>

#include <QSettings>
#include <QVariant>

namespace Board
{

namespace
{

const int maximumRecentLoads = 10;

const QLatin1String key("recentLoadList");

} // namespace

QStringList getRecentLoadList()
{
    return QSettings().value(key, QVariant()).toStringList();
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
    settings.setValue(key, paths);
    settings.sync();
}

} // namespace Board
