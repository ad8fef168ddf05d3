#include <foundation/ThemeIcon.h>

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace
{

constexpr qreal DisabledOpacity = 0.4;

QPixmap render(const QByteArray& svg, const QSize& size, qreal opacity)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(svg);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    painter.setOpacity(opacity);
    renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    return pixmap;
}

} // namespace

namespace Orvex
{

ThemeIcon::ThemeIcon(const QString& iconName, const QByteArray& svg,
                     const std::shared_ptr<const ThemeInks>& inks)
    : name(iconName)
    , drawing(svg)
    , themeInks(inks)
{
}

void ThemeIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(rect.size() * scale, mode, state));
}

QPixmap ThemeIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State)
{
    if (size.isEmpty()) {
        return QPixmap();
    }
    const bool disabled = mode == QIcon::Disabled;
    const QString cacheKey = QStringLiteral("Orvex::ThemeIcon/%1/%2/%3x%4/%5")
                                 .arg(name, themeInks->name)
                                 .arg(size.width())
                                 .arg(size.height())
                                 .arg(disabled);
    QPixmap pixmap;
    if (!QPixmapCache::find(cacheKey, &pixmap)) {
        pixmap = render(getInked(), size, disabled ? DisabledOpacity : 1.0);
        QPixmapCache::insert(cacheKey, pixmap);
    }
    return pixmap;
}

QIconEngine* ThemeIcon::clone() const
{
    return new ThemeIcon(*this);
}

QString ThemeIcon::key() const
{
    return QStringLiteral("Orvex::ThemeIcon");
}

QString ThemeIcon::iconName() const
{
    return name;
}

/// The drawing with its colours exchanged, in one pass, so that no colour is exchanged twice.
QByteArray ThemeIcon::getInked() const
{
    static const QRegularExpression colour(QStringLiteral("#[0-9a-f]{6}"));
    const QString text = QString::fromUtf8(drawing);
    QString inked;
    int copied = 0;
    for (auto found = colour.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        inked += text.midRef(copied, match.capturedStart() - copied);
        inked += themeInks->inks.value(match.captured(), match.captured());
        copied = match.capturedEnd();
    }
    inked += text.midRef(copied);
    return inked.toUtf8();
}

} // namespace Orvex
