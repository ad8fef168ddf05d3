#include "app/SettingsCheck.h"

#include "app/SchemeChoice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMetaEnum>
#include <QSettings>

#include <cmath>
#include <limits>

namespace Kestoboard
{

namespace
{

const int fewestLines = 1000;

QString getSentence(const char* text)
{
    return QCoreApplication::translate("Kestoboard::SettingsCheck", text);
}

bool isScheme(const QVariant& value)
{
    bool isKnown = false;
    QMetaEnum::fromType<SchemeChoice::Choice>().keyToValue(value.toString().toUtf8().constData(),
                                                           &isKnown);
    return isKnown;
}

/// The toolkit would take what does not fit into its type for another number.
bool isNumber(const QVariant& value, int least)
{
    bool isOne = false;
    const qlonglong number = value.toLongLong(&isOne);
    return isOne && number >= least && number <= std::numeric_limits<int>::max();
}

bool isLineLimit(const QVariant& value)
{
    return isNumber(value, fewestLines);
}

bool isPatience(const QVariant& value)
{
    return isNumber(value, 0);
}

bool isFontSize(const QVariant& value)
{
    bool isNumber = false;
    const double size = value.toDouble(&isNumber);
    return isNumber && std::isfinite(size) && size > 0;
}

QString getFreeName(const QString& beginning)
{
    QString name = beginning;
    for (int number = 2; QFile::exists(name); ++number) {
        name = beginning + QString::number(number);
    }
    return name;
}

QString putAside(const QString& file)
{
    const QString aside = getFreeName(file + QStringLiteral(".bad"));
    if (!QFile::rename(file, aside)) {
        return getSentence(QT_TRANSLATE_NOOP("Kestoboard::SettingsCheck",
                                             "The settings in %1 cannot be understood"))
            .arg(QDir::toNativeSeparators(file));
    }
    return getSentence(QT_TRANSLATE_NOOP("Kestoboard::SettingsCheck",
                                         "The settings in %1 cannot be understood: they are kept "
                                         "as %2, and the first ones count"))
        .arg(QDir::toNativeSeparators(file), QDir::toNativeSeparators(aside));
}

} // namespace

QStringList checkSettings()
{
    QSettings settings;
    // A part of the file is read when a key in it is wanted.
    settings.allKeys();
    if (settings.status() == QSettings::FormatError) {
        return {putAside(settings.fileName())};
    }
    const struct {
        const char* key;
        bool (*isUsable)(const QVariant& value);
    } checks[] = {
        {"Window/scheme", isScheme},
        {"Window/consoleLimit", isLineLimit},
        {"Window/consoleFontSize", isFontSize},
        {"Activity/patience", isPatience},
        {"Activity/transferPatience", isPatience},
    };
    QStringList unusable;
    for (const auto& check : checks) {
        const QString key = QLatin1String(check.key);
        if (settings.contains(key) && !check.isUsable(settings.value(key))) {
            settings.remove(key);
            unusable += key;
        }
    }
    if (unusable.isEmpty()) {
        return {};
    }
    return {getSentence(QT_TRANSLATE_NOOP("Kestoboard::SettingsCheck",
                                          "Settings that cannot be used are passed over: %1"))
                .arg(unusable.join(QStringLiteral(", ")))};
}

} // namespace Kestoboard
