#include "app/SchemeChoice.h"

#include <QMetaEnum>
#include <QSettings>

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

void SchemeChoice::apply() const
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
    Orvex::theme->apply();
}

} // namespace Kestoboard
