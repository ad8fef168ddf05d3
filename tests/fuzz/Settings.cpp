#include "Require.h"
#include "Targets.h"
#include "app/RecentLoads.h"

#include <Board/RecentLoadList.h>
#include <Board/ScopeLeaf.h>
#include <foundation/PlainText.h>

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QSpinBox>

namespace Fuzz
{

namespace
{

/// Puts the bytes in place of the settings.
void write(const std::string& bytes)
{
    const QString path = QSettings().fileName();
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate), "the settings can be written");
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    file.flush();
    // A file of a time of its own is read anew.
    static qint64 time = 1'000'000'000'000;
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(++time * 1000 % 4'000'000'000'000),
                     QFileDevice::FileModificationTime);
    file.close();
    QSettings().sync();
}

void readScope()
{
    const Board::ScopeLeaf page(nullptr);
    const auto* const frequency = page.findChild<QSpinBox*>(QStringLiteral("frequencySpinBox"));
    require(frequency->value() >= 1 && frequency->value() <= 999, "a frequency is in its range");
    const auto* const unit = page.findChild<QComboBox*>(QStringLiteral("frequencyUnitComboBox"));
    require(unit->currentText() == QLatin1String("MHz"), "the unit is one of the list");
}

void readRecent()
{
    Kestoboard::refuseRecentLoads();
    for (const QString& path : Board::getRecentLoadList()) {
        require(Orvex::isOneLine(path), "no recent file holds a line break");
    }
    const QString added = QStringLiteral("/bench/design.ksb");
    Board::addRecentLoad(added);
    const QStringList paths = Board::getRecentLoadList();
    require(paths.size() <= 10, "ten recent files are kept");
    require(paths.first() == added && paths.count(added) == 1, "a load is the first, once");
}

} // namespace

void settings(const std::string& bytes)
{
    write(bytes);
    readRecent();
    write(bytes);
    readScope();
}

} // namespace Fuzz
