#ifndef FOUNDATION_THEMEICON_H
#define FOUNDATION_THEMEICON_H

#include <QByteArray>
#include <QHash>
#include <QIconEngine>
#include <QString>

#include <memory>

namespace Orvex
{

/// The colours that icons are drawn in at present; a theme and all of its icons share them.
struct ThemeInks {
    /// Tells one set of colours from another.
    QString name;
    /// Colour as it stands in the drawings -> colour to show in its place, both as "#rrggbb".
    QHash<QString, QString> inks;
};

/// An icon from a drawing in the colours of the theme, rendered anew for every size and scale.
///
/// All copies of the icon, in whichever widget, follow the theme: they show changed colours at
/// their next paint, also after the theme has gone. GUI thread only.
class ThemeIcon : public QIconEngine
{
public:
    /// `iconName` is unique among the icons, `svg` the text of a square SVG picture.
    ThemeIcon(const QString& iconName, const QByteArray& svg,
              const std::shared_ptr<const ThemeInks>& inks);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    QString key() const override;
    QString iconName() const override;

private:
    QByteArray getInked() const;

    QString name;
    QByteArray drawing;
    std::shared_ptr<const ThemeInks> themeInks;
};

} // namespace Orvex

#endif
