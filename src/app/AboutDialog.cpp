#include "app/AboutDialog.h"

#include "app/SimulatedTool.h"

#include <application/Application.h>
#include <application/FixedFont.h>
#include <foundation/Console.h>
#include <foundation/Debug.h>
#include <foundation/Encoding.h>
#include <foundation/Theme.h>

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

namespace Kestoboard
{

namespace
{

const int iconSize = 64;
const int reportedLines = 20;

/// The tool has no command that tells its version: its file tells one build from another.
QString getToolDescription()
{
    const QFileInfo tool(QStandardPaths::findExecutable(QStringLiteral("ksbase2_cli")));
    if (!tool.isFile()) {
        return AboutDialog::tr("not on the search path any more");
    }
    const QString sentence = SimulatedTool::isEnabled()
                                 ? AboutDialog::tr("%1 (simulated boards), %2 bytes of %3")
                                 : AboutDialog::tr("%1, %2 bytes of %3");
    return sentence.arg(tool.filePath(), QString::number(tool.size()),
                        tool.lastModified().toString(Qt::ISODate));
}

QStringList getLatestLines()
{
    const std::deque<Orvex::Message> messages = Orvex::console->getRecentMessages();
    QStringList lines;
    for (const Orvex::Message& message : messages) {
        lines +=
            QString(2 * (message.depth + 1), QLatin1Char(' ')) + Orvex::getReadable(message.text);
    }
    return lines.mid(qMax(0, lines.size() - reportedLines));
}

} // namespace

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("aboutDialog"));
    setWindowTitle(tr("About Kestoboard"));
    auto* const icon = new QLabel(this);
    icon->setPixmap(Orvex::theme->getIcon("kestoboard").pixmap(iconSize, iconSize));
    auto* const heading = new QLabel(Zandu::application->getCopyright(true), this);
    auto* const report = new QPlainTextEdit(getReport(), this);
    report->setObjectName(QStringLiteral("report"));
    report->setAccessibleName(tr("Report"));
    report->setReadOnly(true);
    report->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    report->setFont(Zandu::getFixedFont());

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const copy =
        buttons->addButton(tr("Copy the report"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("copyButton"));
    connect(copy, &QPushButton::clicked, report,
            [report] { QApplication::clipboard()->setText(report->toPlainText()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(icon);
    top->addWidget(heading, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(report);
    layout->addWidget(buttons);
    resize(620, 420);
}

QString AboutDialog::getReport()
{
    const QStringList lines{
        tr("Kestoboard: %1").arg(QCoreApplication::applicationVersion()),
        tr("Qt: %1 (built against %2)")
            .arg(QString::fromLatin1(qVersion()), QStringLiteral(QT_VERSION_STR)),
        tr("System: %1, %2").arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture()),
        tr("Display: %1").arg(QGuiApplication::platformName()),
        tr("Board tool: %1").arg(getToolDescription()),
        tr("Debug mode: %1").arg(Orvex::isDebug() ? tr("on") : tr("off")),
        tr("Transcript: %1").arg(QDir::current().absoluteFilePath(QStringLiteral("ksbase.log"))),
        tr("Latest lines of the console:"),
    };
    return (lines + getLatestLines()).join(QLatin1Char('\n'));
}

} // namespace Kestoboard
