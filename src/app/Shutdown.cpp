#include "app/Shutdown.h"

#include "app/ActivityIndicator.h"
#include "app/LongCommand.h"
#include "app/PanelWindow.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <Board/ScopeLeaf.h>
#include <foundation/ForEachControler.h>
#include <foundation/Theme.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace Kestoboard
{

namespace
{

const int boxIconSize = 48;
/// In milliseconds: so long may the question whether to leave be out of date.
const int watchInterval = 250;

Board::KSBaseHandler* getEngine()
{
    const Board::MainWindow* const window = getPanelWindow();
    return window != nullptr ? window->getKSBaseHandler() : nullptr;
}

/// A command exists exactly as long as somebody waits for it.
bool isAnybodyWaiting()
{
    const Board::KSBaseHandler* const engine = getEngine();
    return engine != nullptr && !engine->getCommandHandlers().isEmpty();
}

bool isAnswered(Board::CommandHandler* handler)
{
    const auto* const indicator = getPanelWindow()->findChild<ActivityIndicator*>();
    return indicator != nullptr && indicator->isAnswered(handler);
}

bool isTransferring()
{
    const Board::KSBaseHandler* const engine = getEngine();
    if (engine == nullptr) {
        return false;
    }
    // All handlers and not the pending ones: a reply may be being written on the worker.
    Board::CommandHandler* handler = nullptr;
    for (Orvex::ForEachControler<Board::CommandHandler*> loop(handler,
                                                              engine->getCommandHandlers());
         loop.next();) {
        if (isBoardWrite(handler) && !isAnswered(handler)) {
            return true;
        }
    }
    return false;
}

/// Nothing begins to wait for the board tool any more.
void silence(Board::MainWindow* window)
{
    window->setEnabled(false);
    QList<QTimer*> timers = window->findChildren<QTimer*>();
    if (const Board::KSBaseHandler* const engine = window->getKSBaseHandler()) {
        timers += engine->findChildren<QTimer*>();
    }
    for (QTimer* const timer : qAsConst(timers)) {
        timer->stop();
    }
}

QString getDanger()
{
    return Shutdown::tr("A bitstream is on its way to the board.");
}

QString getRisk()
{
    return Shutdown::tr(
        "If you leave now, nobody will see whether it arrived. Leave all the same?");
}

/// Brings the question up to date, which may stand while one transfer ends and, from a command
/// file, the next one begins.
void describe(QMessageBox* box)
{
    const bool isOnItsWay = isTransferring();
    const QString text =
        isOnItsWay ? getDanger() : Shutdown::tr("The bitstream is not on its way any more.");
    if (box->text() == text) {
        return;
    }
    box->setText(text);
    box->setInformativeText(
        isOnItsWay ? getRisk() : Shutdown::tr("How it ended stands in the status bar. Leave now?"));
}

} // namespace

void endProcess(int status)
{
    // Not exit(): it destroys what Qt keeps for the whole program, while the worker of the engine
    // may still be using it.
    std::fflush(nullptr);
    std::_Exit(status);
}

Shutdown::Shutdown(QObject* parent)
    : QObject(parent)
{
}

Shutdown::~Shutdown() = default;

void Shutdown::watch(Board::MainWindow* window)
{
    window->installEventFilter(this);
}

bool Shutdown::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Close) {
        return QObject::eventFilter(watched, event);
    }
    event->ignore();
    requestWithQuestion();
    return true;
}

void Shutdown::requestWithQuestion()
{
    Board::MainWindow* const window = getPanelWindow();
    if (window != nullptr && isTransferring()) {
        ask(window);
    } else {
        request();
    }
}

void Shutdown::request()
{
    if (isAnybodyWaiting()) {
        endNow();
    }
    save();
    if (Board::MainWindow* const window = getPanelWindow()) {
        silence(window);
        window->hide();
    }
    QCoreApplication::exit(EXIT_SUCCESS);
}

void Shutdown::endNow()
{
    save();
    emit ending();
    endProcess(EXIT_SUCCESS);
}

void Shutdown::save()
{
    const Board::MainWindow* const window = getPanelWindow();
    if (window == nullptr) {
        return;
    }
    emit saving();
    for (Board::ScopeLeaf* const leaf : window->findChildren<Board::ScopeLeaf*>()) {
        leaf->saveSettings();
    }
}

void Shutdown::prepareSessionEnd(const SessionEnd& session)
{
    save();
    Board::MainWindow* const window = getPanelWindow();
    if (window == nullptr || !isTransferring() || !session.mayAsk()) {
        return;
    }
    ask(window);
    bool isStaying = false;
    QEventLoop answer;
    connect(question, &QDialog::rejected, &answer, [&isStaying] { isStaying = true; });
    connect(question, &QDialog::finished, &answer, &QEventLoop::quit);
    connect(question, &QObject::destroyed, &answer, &QEventLoop::quit);
    answer.exec();
    if (isStaying) {
        session.cancel();
    }
}

void Shutdown::ask(Board::MainWindow* window)
{
    if (question) {
        question->raise();
        question->activateWindow();
        return;
    }
    question = makeQuestion(window);
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question->findChild<QPushButton*>(QStringLiteral("leaveButton")), &QPushButton::clicked,
            this, &Shutdown::request);
    auto* const watch = new QTimer(question);
    connect(watch, &QTimer::timeout, question, [box = question.data()] { describe(box); });
    watch->start(watchInterval);
    // Not exec(): the question must not become one more wait on top of the others, unless the
    // session waits for the answer.
    question->open();
}

QMessageBox* Shutdown::makeQuestion(QWidget* parent)
{
    auto* const box = new QMessageBox(parent);
    box->setObjectName(QStringLiteral("leaveQuestion"));
    box->setIconPixmap(Orvex::theme->getIcon("warning").pixmap(boxIconSize, boxIconSize));
    box->setWindowTitle(tr("Leave Kestoboard"));
    box->setText(getDanger());
    box->setInformativeText(getRisk());
    QPushButton* const leave = box->addButton(tr("Leave"), QMessageBox::DestructiveRole);
    QPushButton* const stay = box->addButton(tr("Stay"), QMessageBox::RejectRole);
    leave->setObjectName(QStringLiteral("leaveButton"));
    stay->setObjectName(QStringLiteral("stayButton"));
    box->setDefaultButton(stay);
    box->setEscapeButton(stay);
    return box;
}

} // namespace Kestoboard
