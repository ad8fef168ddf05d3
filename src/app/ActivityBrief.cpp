#include "app/ActivityBrief.h"

#include "app/ActivityIndicator.h"
#include "app/StateIcon.h"

#include <foundation/PlainText.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QStatusBar>

namespace Kestoboard
{

ActivityBrief::ActivityBrief(const ActivityIndicator* indicator, QStatusBar* statusBar)
    : QWidget(statusBar)
    , activity(indicator)
    , bar(statusBar)
    , icon(new StateIcon(this))
    , label(new QLabel(this))
{
    setObjectName(QStringLiteral("activityBrief"));
    label->setTextFormat(Qt::PlainText);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 8, 0);
    row->setSpacing(5);
    row->addWidget(icon);
    row->addWidget(label);
    connect(activity, &ActivityIndicator::changed, this, &ActivityBrief::refresh);
    connect(bar, &QStatusBar::messageChanged, this, &ActivityBrief::refresh);
    refresh();
}

void ActivityBrief::refresh()
{
    const QString words = activity->getBrief();
    icon->showIcon(activity->getIconName());
    label->setText(words);
    setToolTip(Orvex::getLiteral(activity->getText()));
    setVisible(!bar->currentMessage().isEmpty() && !words.isEmpty());
}

} // namespace Kestoboard
