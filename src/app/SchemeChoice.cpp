#include "app/SchemeChoice.h"

#include <QApplication>
#include <QEvent>
#include <QMetaEnum>
#include <QPointer>
#include <QScopedValueRollback>
#include <QSettings>
#include <QVector>
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

/// Keeps the focus of every window where it is: the buttons of a dialog are laid out anew by
/// another style, and lose it.
class FocusKeeper
{
public:
    FocusKeeper()
    {
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->focusWidget() != nullptr) {
                focused += window->focusWidget();
            }
        }
    }
    ~FocusKeeper()
    {
        for (const QPointer<QWidget>& widget : qAsConst(focused)) {
            if (widget && widget->window()->focusWidget() != widget) {
                widget->setFocus();
            }
        }
    }
    FocusKeeper(const FocusKeeper&) = delete;
    FocusKeeper& operator=(const FocusKeeper&) = delete;

private:
    QVector<QPointer<QWidget>> focused;
};

} // namespace

SchemeChoice::SchemeChoice(QObject* parent)
    : QObject(parent)
{
    connect(&desktop, &DesktopScheme::changed, this, &SchemeChoice::follow);
    connect(qApp, &QGuiApplication::paletteChanged, this, &SchemeChoice::onPaletteChanged);
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
    look = Look::All;
    show();
}

void SchemeChoice::prepare()
{
    look = Look::Colors;
    show();
    qApp->installEventFilter(this);
}

void SchemeChoice::show()
{
    const QScopedValueRollback<bool> showing(isShowing, true);
    const FocusKeeper focus;
    chooseScheme();
    Orvex::theme->applyColors();
    if (look == Look::All) {
        Orvex::theme->applyStyleSheet();
    }
}

void SchemeChoice::follow()
{
    if (look != Look::None && getChoice() == Choice::System) {
        show();
    }
}

/// Some desktops have a part in the toolkit that gives the program their new palette, over that of
/// the panel, whose style sheet would then stand on foreign colours.
void SchemeChoice::onPaletteChanged()
{
    if (isShowing || look == Look::None) {
        return;
    }
    const Orvex::Theme::Scheme told = Orvex::Theme::getSystemScheme();
    // Not within the change, of which the widgets are still being told.
    QMetaObject::invokeMethod(
        this,
        [this, told] {
            desktop.setPaletteScheme(told);
            show();
        },
        Qt::QueuedConnection);
}

/// A window is polished just before it is shown, and before what is in it. The list of a combo box
/// is a window as well, and is polished when it is made.
bool SchemeChoice::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (event->type() == QEvent::Polish && widget != nullptr && widget->isWindow() &&
        widget->windowType() != Qt::Popup) {
        qApp->removeEventFilter(this);
        look = Look::All;
        const QScopedValueRollback<bool> showing(isShowing, true);
        Orvex::theme->applyStyleSheet();
    }
    return false;
}

void SchemeChoice::chooseScheme() const
{
    switch (getChoice()) {
    case Choice::System:
        Orvex::theme->setScheme(desktop.get());
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
