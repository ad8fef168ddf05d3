#include "app/StartupWait.h"

#include "app/PanelWindow.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <foundation/Encoding.h>

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include <chrono>

namespace Kestoboard
{

namespace
{

using namespace std::chrono_literals;

/// Most starts are over by then.
const std::chrono::milliseconds patience = 700ms;
const std::chrono::milliseconds tick = 500ms;

QString getRunningCommand()
{
    const Board::MainWindow* const window = getPanelWindow();
    if (window == nullptr || window->getKSBaseHandler() == nullptr) {
        return {};
    }
    const Board::CommandHandler* const handler =
        window->getKSBaseHandler()->getCommandHandlers().getRunnings().getFirst();
    return handler != nullptr ? Orvex::getReadable(handler->getCommand()) : QString();
}

} // namespace

StartupWait::StartupWait()
    : detail(new QLabel(this))
{
    setObjectName(QStringLiteral("startupWait"));
    setWindowTitle(tr("Kestoboard"));
    auto* const layout = new QVBoxLayout(this);
    auto* const heading = new QLabel(tr("Waiting for ksbase2_cli to list its boards…"), this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    layout->addWidget(heading);

    auto* const progress = new QProgressBar(this);
    progress->setRange(0, 0);
    progress->setTextVisible(false);
    progress->setAccessibleName(tr("Waiting for the board tool"));
    layout->addWidget(progress);

    detail->setObjectName(QStringLiteral("startupDetail"));
    detail->setTextFormat(Qt::PlainText);
    detail->setMinimumWidth(360);
    layout->addWidget(detail);

    auto* const buttons = new QDialogButtonBox(this);
    auto* const quit = buttons->addButton(tr("Quit"), QDialogButtonBox::RejectRole);
    quit->setObjectName(QStringLiteral("quitButton"));
    connect(buttons, &QDialogButtonBox::rejected, this, &StartupWait::reject);
    layout->addWidget(buttons);

    elapsed.start();
    connect(&timer, &QTimer::timeout, this, &StartupWait::refresh);
    timer.start(patience);
}

StartupWait::~StartupWait() = default;

void StartupWait::closeEvent(QCloseEvent* event)
{
    event->ignore();
    emit quitRequested();
}

void StartupWait::reject()
{
    emit quitRequested();
}

void StartupWait::refresh()
{
    const QString time =
        QTime(0, 0).addMSecs(static_cast<int>(elapsed.elapsed())).toString(QStringLiteral("mm:ss"));
    const QString command = getRunningCommand();
    detail->setText(command.isEmpty() ? tr("The board tool has been started. (%1)").arg(time)
                                      : tr("The board tool is at \"%1\". (%2)").arg(command, time));
    timer.setInterval(tick);
    show();
}

} // namespace Kestoboard
