#include "app/DesktopScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariant>

namespace Kestoboard
{

namespace
{

using Scheme = Orvex::Theme::Scheme;

QString getService()
{
    return QStringLiteral("org.freedesktop.portal.Desktop");
}

QString getPath()
{
    return QStringLiteral("/org/freedesktop/portal/desktop");
}

QString getInterface()
{
    return QStringLiteral("org.freedesktop.portal.Settings");
}

QString getSpace()
{
    return QStringLiteral("org.freedesktop.appearance");
}

QString getKey()
{
    return QStringLiteral("color-scheme");
}

} // namespace

DesktopScheme::DesktopScheme(QDBusConnection bus, QObject* parent)
    : QObject(parent)
    , paletteScheme(Orvex::Theme::getSystemScheme())
{
    if (bus.isConnected()) {
        // First, so that no change falls between.
        bus.connect(getService(), getPath(), getInterface(), QStringLiteral("SettingChanged"), this,
                    SLOT(onSettingChanged(QString, QString, QDBusVariant)));
        ask(bus);
    }
}

void DesktopScheme::ask(const QDBusConnection& bus)
{
    QDBusMessage question = QDBusMessage::createMethodCall(getService(), getPath(), getInterface(),
                                                           QStringLiteral("Read"));
    question << getSpace() << getKey();
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        // A change that came before the answer is the newer one.
        if (!reply.isError() && !preference) {
            setPreference(reply.value().variant());
        }
    });
}

void DesktopScheme::onSettingChanged(const QString& space, const QString& key,
                                     const QDBusVariant& value)
{
    if (space == getSpace() && key == getKey()) {
        setPreference(value.variant());
    }
}

void DesktopScheme::setPreference(const QVariant& value)
{
    QVariant inner = value;
    // The answer to a question is wrapped once more than the value of a change.
    while (inner.canConvert<QDBusVariant>()) {
        inner = inner.value<QDBusVariant>().variant();
    }
    switch (inner.toUInt()) {
    case 1:
        take(Scheme::Dark, paletteScheme);
        break;
    case 2:
        take(Scheme::Light, paletteScheme);
        break;
    default:
        take(std::nullopt, paletteScheme);
        break;
    }
}

Scheme DesktopScheme::get() const
{
    return preference.value_or(paletteScheme);
}

void DesktopScheme::setPaletteScheme(Scheme scheme)
{
    take(preference, scheme);
}

void DesktopScheme::take(std::optional<Scheme> newPreference, Scheme newPalette)
{
    const Scheme former = get();
    preference = newPreference;
    paletteScheme = newPalette;
    if (get() != former) {
        emit changed();
    }
}

} // namespace Kestoboard
