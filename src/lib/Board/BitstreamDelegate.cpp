#include <Board/BitstreamDelegate.h>

#include <foundation/ArrayCollection.h>
#include <foundation/FromCollection.h>
#include <foundation/Text.h>
#include <foundation/Theme.h>

#include <QFileInfo>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QTextDocument>
#include <QUrl>
#include <QVariant>

#include <string>

namespace Board
{

namespace
{

bool isBitstreamSuffix(const std::string& suffix)
{
    const std::string suffixes[3] = {"ksb", "bbs", "bts"};
    return !Orvex::FromCollection<std::string>(Orvex::ArrayCollection<std::string, 3>(suffixes),
                                               suffix)
                .isEmpty();
}

void paintCard(QPainter* painter, const QStyleOptionViewItem& option)
{
    QColor color = Orvex::theme->getColor("background");
    if ((option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) != 0) {
        color = Orvex::theme->getColor("button_checked");
    }
    painter->setPen(color);
    painter->setBrush(QBrush(color, Qt::SolidPattern));
    // The fill keeps away from the edge of the painted area, where a cut row would look broken.
    const QRect card =
        option.rect.adjusted(0, 0, -1, -1) & painter->window().adjusted(2, 2, -2, -2);
    painter->drawRects(&card, 1);
}

// Whatever a name of a file refers to stays where it is: no picture and no style sheet is loaded,
// neither from the disk nor from elsewhere. A picture that is there in name only keeps the toolkit
// from opening the file itself.
class SelfContainedDocument : public QTextDocument
{
protected:
    QVariant loadResource(int type, const QUrl& /*name*/) override
    {
        if (type != QTextDocument::ImageResource) {
            return {};
        }
        QImage nothing(1, 1, QImage::Format_ARGB32_Premultiplied);
        nothing.fill(Qt::transparent);
        return nothing;
    }
};

// The name goes in as it is: markup in a file name is rendered.
QString getHtml(const QString& name, const QString& description)
{
    const QString textColor = Orvex::theme->getColorName("text");
    const QString lightColor = Orvex::theme->getColorName("text_light");
    return QStringLiteral("<font color=\"") + textColor + QStringLiteral("\"><b>") + name +
           QStringLiteral("</b></font><br />") + QStringLiteral("<font size=-1 color=\"") +
           lightColor + QStringLiteral("\">") + description + QStringLiteral("</font>");
}

void paintText(QPainter* painter, const QRect& row, const QString& html)
{
    SelfContainedDocument document;
    document.setHtml(html);
    painter->save();
    painter->translate(QPointF(row.left() + 58, row.top() + 10));
    document.drawContents(
        painter, QRectF(0, 0, row.right() - row.left() - 57, row.bottom() - row.top() - 9));
    painter->restore();
}

} // namespace

BitstreamDelegate::BitstreamDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

BitstreamDelegate::~BitstreamDelegate() = default;

void BitstreamDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    paintCard(painter, option);

    const QString path = index.data(Qt::UserRole).toString();
    const QString name = index.data(Qt::DisplayRole).toString();
    const std::string suffix = Orvex::getLabel(QFileInfo(path).suffix().toLower());
    QString description;
    QIcon icon = Orvex::theme->getIcon("directory");
    if (isBitstreamSuffix(suffix)) {
        icon = Orvex::theme->getIcon(suffix);
        description = QStringLiteral("Bitstream file");
    }
    icon.paint(painter, QRect(option.rect.topLeft() + QPoint(5, 5), QSize(48, 48)),
               Qt::AlignLeft | Qt::AlignVCenter, QIcon::Normal, QIcon::Off);
    paintText(painter, option.rect, getHtml(name, description));
}

QSize BitstreamDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                  const QModelIndex& /*index*/) const
{
    return {200, 58};
}

} // namespace Board
