#include "app/SettingsCheck.h"

#include "app/SchemeChoice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMetaEnum>
#include <QSettings>

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

bool isLineLimit(const QVariant& value)
{
    return value.toInt() >= fewestLines;
}

QString putAside(const QString& file)
{
    const QString aside = file + QStringLiteral(".bad");
    QFile::remove(aside);
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
    if (settings.status() == QSettings::FormatError) {
        return {putAside(settings.fileName())};
    }
    const struct {
        const char* key;
        bool (*isUsable)(const QVariant& value);
    } checks[] = {
        {"Window/scheme", isScheme},
        {"Window/consoleLimit", isLineLimit},
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
