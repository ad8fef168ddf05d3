#include "app/RestingCursor.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>

namespace Kestoboard
{

namespace
{

const int still = 0;
const int asTheDesktopWishes = -1;

bool isTouch(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::WindowActivate:
        return true;
    default:
        return false;
    }
}

} // namespace

RestingCursor::RestingCursor(std::chrono::milliseconds untilRest, QObject* parent)
    : QObject(parent)
    , patience(untilRest)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &RestingCursor::restUnlessTouched);
    onTouched();
    qApp->installEventFilter(this);
}

RestingCursor::~RestingCursor()
{
    QGuiApplication::styleHints()->setCursorFlashTime(asTheDesktopWishes);
}

bool RestingCursor::eventFilter(QObject* watched, QEvent* event)
{
    if (isTouch(event->type())) {
        onTouched();
    }
    return QObject::eventFilter(watched, event);
}

void RestingCursor::onTouched()
{
    sinceTouch.start();
    if (!timer.isActive()) {
        QGuiApplication::styleHints()->setCursorFlashTime(asTheDesktopWishes);
        timer.start(patience);
    }
}

/// The timer is not started anew with each of many touches.
void RestingCursor::restUnlessTouched()
{
    const std::chrono::milliseconds left =
        patience - std::chrono::milliseconds(sinceTouch.elapsed());
    if (left.count() > 0) {
        timer.start(left);
    } else {
        QGuiApplication::styleHints()->setCursorFlashTime(still);
    }
}

} // namespace Kestoboard
