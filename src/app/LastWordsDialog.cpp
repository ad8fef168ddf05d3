#include "app/LastWordsDialog.h"

#include <application/FixedFont.h>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStringList>
#include <QTextCursor>
#include <QVBoxLayout>

#include <utility>

namespace Kestoboard
{

namespace
{

/// A line of many millions would keep the window from being shown.
const int longestLine = 2000;

/// The text with the lines cut that are too long to be looked at.
QString getShown(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.size() > longestLine) {
            const int end =
                line.at(longestLine - 1).isHighSurrogate() ? longestLine - 1 : longestLine;
            const int left = line.size() - end;
            line.truncate(end);
            line += LastWordsDialog::tr("… (%1 more characters, which \"Copy\" takes as well)")
                        .arg(QLocale().toString(left));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

LastWordsDialog::LastWordsDialog(const QString& text, const QString& keptName,
                                 std::function<bool()> keeper)
    : keep(std::move(keeper))
    , remark(new QLabel(this))
{
    setObjectName(QStringLiteral("lastWords"));
    setWindowTitle(tr("Kestoboard has ended"));
    auto* const heading = new QLabel(
        tr("The board tool has ended, and the panel with it. This was said last:"), this);
    heading->setWordWrap(true);
    remark->setObjectName(QStringLiteral("keptRemark"));
    remark->setText(tr("\"Start again\" begins a new transcript. This one is kept beside it as %1.")
                        .arg(keptName));
    remark->setVisible(!keptName.isEmpty());
    remark->setWordWrap(true);
    remark->setTextFormat(Qt::PlainText);
    remark->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const report = new QPlainTextEdit(getShown(text), this);
    report->setAccessibleName(tr("Last lines of the console"));
    report->setReadOnly(true);
    report->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    report->setFont(Zandu::getFixedFont());
    report->moveCursor(QTextCursor::End);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const again = buttons->addButton(tr("Start again"), QDialogButtonBox::AcceptRole);
    QPushButton* const copy = buttons->addButton(tr("Copy"), QDialogButtonBox::ActionRole);
    again->setObjectName(QStringLiteral("startAgainButton"));
    again->setDefault(true);
    again->setFocus();
    copy->setObjectName(QStringLiteral("copyButton"));
    connect(copy, &QPushButton::clicked, report,
            [text] { QApplication::clipboard()->setText(text); });
    connect(buttons, &QDialogButtonBox::accepted, this, &LastWordsDialog::startAgain);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(report);
    layout->addWidget(remark);
    layout->addWidget(buttons);
    resize(640, 420);
}

/// Where the transcript cannot be kept, the first press says so and the second one goes on.
void LastWordsDialog::startAgain()
{
    if (!isWarned && !keep()) {
        isWarned = true;
        remark->setText(tr("The transcript cannot be renamed. Copy it elsewhere: \"Start again\" "
                           "begins a new one in its place."));
        remark->show();
        return;
    }
    emit startAgainRequested();
    accept();
}

} // namespace Kestoboard
