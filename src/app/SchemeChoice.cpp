#include "app/SchemeChoice.h"

#include <QApplication>
#include <QEvent>
#include <QMetaEnum>
#include <QSettings>
#include <QWidget>

namespace Kestoboard
{

namespace
{

QString getKey()
{
    return QStringLiteral("Window/scheme");
}

QMetaEnum getNames()
{
    return QMetaEnum::fromType<SchemeChoice::Choice>();
}

} // namespace

SchemeChoice::SchemeChoice(QObject* parent)
    : QObject(parent)
    , systemScheme(Orvex::Theme::getSystemScheme())
{
}

SchemeChoice::Choice SchemeChoice::getChoice() const
{
    bool isKnown = false;
    const QByteArray name = QSettings().value(getKey()).toString().toLatin1();
    const int value = getNames().keyToValue(name.constData(), &isKnown);
    return isKnown ? static_cast<Choice>(value) : Choice::System;
}

void SchemeChoice::choose(Choice choice)
{
    QSettings().setValue(getKey(),
                         QString::fromLatin1(getNames().valueToKey(static_cast<int>(choice))));
    apply();
}

void SchemeChoice::apply()
{
    qApp->removeEventFilter(this);
    chooseScheme();
    Orvex::theme->apply();
}

void SchemeChoice::prepare()
{
    chooseScheme();
    Orvex::theme->applyColors();
    qApp->installEventFilter(this);
}

/// A window is polished just before it is shown, and before what is in it. The list of a combo box
/// is a window as well, and is polished when it is made.
bool SchemeChoice::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (event->type() == QEvent::Polish && widget != nullptr && widget->isWindow() &&
        widget->windowType() != Qt::Popup) {
        qApp->removeEventFilter(this);
        Orvex::theme->applyStyleSheet();
    }
    return false;
}

void SchemeChoice::chooseScheme() const
{
    switch (getChoice()) {
    case Choice::System:
        Orvex::theme->setScheme(systemScheme);
        break;
    case Choice::Light:
        Orvex::theme->setScheme(Orvex::Theme::Scheme::Light);
        break;
    case Choice::Dark:
        Orvex::theme->setScheme(Orvex::Theme::Scheme::Dark);
        break;
    }
}

} // namespace Kestoboard
