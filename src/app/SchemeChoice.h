#ifndef APP_SCHEMECHOICE_H
#define APP_SCHEMECHOICE_H

#include "app/DesktopScheme.h"

#include <QObject>

namespace Kestoboard
{

/// Whether the panel is light or dark, as the person or else the desktop wants it. The choice is
/// stored at once. Where it is the desktop's, the panel follows it as it changes.
class SchemeChoice : public QObject
{
    Q_OBJECT

public:
    enum class Choice { System, Light, Dark };
    Q_ENUM(Choice)

    /// Needs a QGuiApplication whose palette is still that of the desktop.
    explicit SchemeChoice(QObject* parent = nullptr);

    /// The stored choice; the desktop's where none or nonsense is stored.
    Choice getChoice() const;
    /// Stores a choice and gives the panel its look.
    void choose(Choice choice);
    /// Gives the panel the look of the stored choice.
    void apply();
    /// The same with less work where windows are about to be built: their style sheet follows when
    /// the first of them is about to be shown, once for all that is in it by then.
    void prepare();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// How much of its look the panel has.
    enum class Look { None, Colors, All };

    void chooseScheme() const;
    void follow();
    void onPaletteChanged();
    void show();

    DesktopScheme desktop;
    Look look = Look::None;
    bool isShowing = false;
};

} // namespace Kestoboard

#endif
