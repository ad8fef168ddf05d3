#include "app/LastWordsDialog.h"

#include <application/FixedFont.h>

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Kestoboard
{

LastWordsDialog::LastWordsDialog(const QString& text)
{
    setObjectName(QStringLiteral("lastWords"));
    setWindowTitle(tr("Kestoboard has ended"));
    auto* const heading = new QLabel(
        tr("The board tool has ended, and the panel with it. This was said last:"), this);
    heading->setWordWrap(true);
    auto* const report = new QPlainTextEdit(text, this);
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
            [report] { QApplication::clipboard()->setText(report->toPlainText()); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        emit startAgainRequested();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(report);
    layout->addWidget(buttons);
    resize(640, 420);
}

} // namespace Kestoboard
