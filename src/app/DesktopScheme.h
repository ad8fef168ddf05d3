#ifndef APP_DESKTOPSCHEME_H
#define APP_DESKTOPSCHEME_H

#include "app/SessionBus.h"

#include <foundation/Theme.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <optional>

class QVariant;

namespace Kestoboard
{

/// Whether the desktop is light or dark, from the start on and at each change.
///
/// What the person has chosen in the settings of the desktop comes by its bus, from its portal.
/// Where nobody answers there, or has no preference, the palette counts that the desktop gives to
/// the toolkit. GUI thread; nothing of it waits for the portal.
class DesktopScheme : public QObject
{
    Q_OBJECT

public:
    /// Needs a QApplication whose palette is still that of the desktop. Without a bus a connection
    /// that is none does.
    explicit DesktopScheme(QDBusConnection bus = getSessionBus(), QObject* parent = nullptr);

    /// What is known at the moment.
    Orvex::Theme::Scheme get() const;

    /// Takes note of the palette that the desktop has given to the program meanwhile.
    void setPaletteScheme(Orvex::Theme::Scheme scheme);

signals:
    void changed();

private slots:
    // The bus connects by name only.
    void onSettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void ask(const QDBusConnection& bus);
    void setPreference(const QVariant& value);
    void take(std::optional<Orvex::Theme::Scheme> newPreference, Orvex::Theme::Scheme newPalette);

    /// None as long as the portal has told none.
    std::optional<Orvex::Theme::Scheme> preference;
    Orvex::Theme::Scheme paletteScheme;
};

} // namespace Kestoboard

#endif
