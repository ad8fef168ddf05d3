#include "app/DesktopNotice.h"

#include "app/SessionBus.h"

#include <foundation/PlainText.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <QWidget>

namespace Kestoboard
{

namespace
{

/// The time that the desktop shows a notification when nothing else is wished.
const int usualTime = -1;

bool isAt(const QWidget* window)
{
    const QWidget* active = QApplication::activeWindow();
    while (active != nullptr && active != window) {
        active = active->parentWidget();
    }
    return active != nullptr;
}

QDBusMessage makeCall(const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                          QStringLiteral("/org/freedesktop/Notifications"),
                                          QStringLiteral("org.freedesktop.Notifications"), method);
}

QDBusMessage makeNotice(const QString& body)
{
    const uint replacesNone = 0;
    QDBusMessage notice = makeCall(QStringLiteral("Notify"));
    notice << QStringLiteral("Kestoboard") << replacesNone << QStringLiteral("kestoboard")
           << QStringLiteral("Kestoboard") << body << QStringList()
           << QVariantMap{{QStringLiteral("desktop-entry"), QGuiApplication::desktopFileName()}}
           << usualTime;
    return notice;
}

/// Asks the desktop what it can show, and has it show the sentence then.
void show(const QString& sentence, const QDBusConnection& bus, QObject* context)
{
    const QDBusPendingCall question = bus.asyncCall(makeCall(QStringLiteral("GetCapabilities")));
    auto* const watcher = new QDBusPendingCallWatcher(question, context);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, context, [watcher, sentence, bus] {
            const QDBusPendingReply<QStringList> reply = *watcher;
            watcher->deleteLater();
            if (!reply.isError()) {
                const bool isMarkup = reply.value().contains(QStringLiteral("body-markup"));
                bus.send(makeNotice(getNoticeBody(sentence, isMarkup)));
            }
        });
}

} // namespace

QString getNoticeBody(const QString& sentence, bool isMarkup)
{
    const QString visible = Orvex::getVisible(sentence);
    return isMarkup ? visible.toHtmlEscaped() : visible;
}

void notify(QWidget* window, const QString& sentence)
{
    if (isAt(window)) {
        return;
    }
    QApplication::alert(window);
    const QDBusConnection bus = getSessionBus();
    if (bus.isConnected()) {
        show(sentence, bus, window);
    }
}

} // namespace Kestoboard
