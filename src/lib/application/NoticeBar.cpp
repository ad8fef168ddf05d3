#include <application/NoticeBar.h>

#include <application/IconButton.h>

#include <foundation/Theme.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <chrono>

namespace Zandu
{

namespace
{

constexpr std::chrono::seconds informTime(8);
constexpr int iconSize = 16;

} // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent)
    , iconLabel(new QLabel(this))
    , textLabel(new QLabel(this))
{
    textLabel->setObjectName(QStringLiteral("noticeText"));
    textLabel->setTextFormat(Qt::PlainText);
    textLabel->setWordWrap(true);
    textLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QToolButton* closer = createIconButton("close", tr("Close this notice"), this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 2, 2);
    layout->addWidget(iconLabel);
    layout->addWidget(textLabel, 1);
    layout->addWidget(closer);
    hide();

    timer.setSingleShot(true);
    timer.setInterval(informTime);
    connect(&timer, &QTimer::timeout, this, &QWidget::hide);
    connect(closer, &QToolButton::clicked, this, &QWidget::hide);
}

void NoticeBar::inform(const QString& sentence)
{
    say("success", sentence);
    timer.start();
}

void NoticeBar::warn(const QString& sentence)
{
    say("warning", sentence);
    timer.stop();
}

QString NoticeBar::getSentence() const
{
    return isHidden() ? QString() : textLabel->text();
}

void NoticeBar::say(const char* iconName, const QString& sentence)
{
    iconLabel->setPixmap(Orvex::theme->getIcon(iconName).pixmap(window()->windowHandle(),
                                                                QSize(iconSize, iconSize)));
    textLabel->setText(sentence);
    setAccessibleName(sentence);
    show();
}

} // namespace Zandu
