#ifndef FOUNDATION_THEME_H
#define FOUNDATION_THEME_H

#include <foundation/Export.h>

#include <QColor>
#include <QIcon>
#include <QObject>
#include <QPalette>
#include <QString>

#include <map>
#include <memory>
#include <string>

class QComboBox;
class QListWidget;
class QTreeView;
class QTreeWidget;

namespace Orvex
{

struct ThemeInks;

/// The look of the panel: icons and colours by name, and the styling of the application.
///
/// One theme serves a process for its whole run; GUI thread only. References that it hands out stay
/// valid as long as the theme lives and show the scheme of the moment. Names are lower case.
///
/// Colours: "window" (behind everything), "base" (lists and fields), "background" (cards),
/// "button", "button_hover", "button_checked", "border" (between areas), "frame" (around fields),
/// "text", "text_light", "disabled", "accent", "selection", "selection_text", "tooltip",
/// "tooltip_text", "icon", "match" (behind found
/// text), "error", "warning", "success".
///
/// Icons: one for each drawing of `resources/icons`, under the name of its file.
class ORVEX_EXPORT Theme : public QObject
{
    Q_OBJECT

public:
    enum class Scheme { Light, Dark };
    Q_ENUM(Scheme)

    explicit Theme(Scheme initialScheme);
    ~Theme() override;

    /// The scheme of the desktop. To be asked before the first `apply`: afterwards the palette of
    /// the application is that of a theme. Needs a QGuiApplication.
    static Scheme getSystemScheme();

    Scheme getScheme() const;

    /// Changes every colour and icon in place and emits `schemeChanged`. Widgets take the new
    /// palette with the next `apply`.
    void setScheme(Scheme newScheme);

    /// An empty icon when there is none of that name.
    const QIcon& getIcon(const std::string& name) const;

    /// The colour "text" when there is none of that name.
    const QColor& getColor(const std::string& name) const;

    /// The colour as "#rrggbb", which HTML understands; that of "text" when there is none of that
    /// name.
    const QString& getColorName(const std::string& name) const;

    QPalette getPalette() const;

    QString getStyleSheet() const;

    /// Gives the running QApplication the style, palette and style sheet of the scheme.
    void apply() const;

    /// The two halves of `apply`: style and palette first, the style sheet after them. A style
    /// sheet costs each widget that is made under it, so that a large window is built before it.
    /// @{
    void applyColors() const;
    void applyStyleSheet() const;
    /// @}

    /// Restyles a view in place, once, right after its creation; null is passed over.
    void enrich(QComboBox* comboBox) const;
    void enrich(QListWidget* list) const;
    void enrich(QTreeWidget* tree) const;
    void enrich(QTreeView* tree) const;

signals:
    void schemeChanged();

private:
    struct Color {
        QColor color;
        QString name;
    };

    const Color& getNamed(const std::string& name) const;
    void fillColors();
    void loadIcons();

    Scheme scheme;
    std::map<std::string, Color> colors;
    std::map<std::string, QIcon> icons;
    std::shared_ptr<ThemeInks> inks;
};

/// The theme of the process; set by the application before the first window is made.
extern ORVEX_EXPORT Theme* theme;

} // namespace Orvex

#endif
