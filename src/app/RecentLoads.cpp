#include "app/RecentLoads.h"

#include <foundation/Console.h>
#include <foundation/PlainText.h>

#include <QCoreApplication>
#include <QSettings>
#include <QStringList>

namespace Kestoboard
{

namespace
{

const QLatin1String key("recentLoadList");

} // namespace

void refuseRecentLoads()
{
    QSettings settings;
    const QStringList paths = settings.value(key).toStringList();
    QStringList taken;
    for (const QString& path : paths) {
        if (Orvex::isOneLine(path)) {
            taken << path;
            continue;
        }
        const QString sentence =
            QCoreApplication::translate("Kestoboard::RecentLoads",
                                        "\"%1\" is no longer among the recent files: it holds a "
                                        "line break, which the board tool cannot take.")
                .arg(Orvex::getVisible(path));
        Orvex::console->warning(sentence.toUtf8().constData(), "");
    }
    if (taken.size() != paths.size()) {
        settings.setValue(key, taken);
    }
}

} // namespace Kestoboard
