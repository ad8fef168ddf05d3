// The panel with somebody at its controls: the first argument is the part that is played, the rest
// is the command line of the panel. The console goes to standard output, and so does what happens.

#include "app/ChosenBitstream.h"
#include "app/CommandLine.h"
#include "app/ConsolePrinter.h"
#include "app/LastWords.h"
#include "app/PanelApplication.h"
#include "app/PanelSession.h"
#include "app/PanelWindow.h"
#include "app/Shutdown.h"

#include <Board/CommandHandler.h>
#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>
#include <foundation/Debug.h>
#include <foundation/Fatal.h>
#include <foundation/ForEachControler.h>
#include <foundation/Raise.h>

#include <QFile>
#include <QMap>
#include <QMessageBox>
#include <QPushButton>
#include <QSessionManager>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>

namespace
{

using Kestoboard::getPanelWindow;

const Kestoboard::PanelSession* session = nullptr;
bool isAnswered = false;

/// Does one step after the other, each as soon as its condition holds.
class Actor : public QObject
{
public:
    using Condition = std::function<bool()>;
    using Action = std::function<void()>;

    Actor()
    {
        connect(&ticker, &QTimer::timeout, this, &Actor::act);
        ticker.start(5);
    }

    Actor& when(Condition condition, Action action)
    {
        steps.push_back({std::move(condition), std::move(action)});
        return *this;
    }

private:
    void act()
    {
        if (steps.empty() || !steps.front().condition()) {
            return;
        }
        const Action action = steps.front().action;
        steps.pop_front();
        action();
    }

    struct Step {
        Condition condition;
        Action action;
    };
    std::deque<Step> steps;
    QTimer ticker;
};

void say(const char* text)
{
    std::puts(text);
    std::fflush(stdout);
}

Kestoboard::Shutdown& getShutdown()
{
    return *session->findChild<Kestoboard::Shutdown*>();
}

Board::KSBaseHandler& getEngine()
{
    return *getPanelWindow()->getKSBaseHandler();
}

bool isIdle()
{
    return getPanelWindow() != nullptr && getPanelWindow()->isVisible() &&
           getEngine().getCommandHandlers().isEmpty();
}

/// The command of that text is in the queue.
Actor::Condition isQueued(const std::string& text)
{
    return [text] {
        Board::CommandHandler* handler = nullptr;
        for (Orvex::ForEachControler<Board::CommandHandler*> loop(handler,
                                                                  getEngine().getCommandHandlers());
             loop.next();) {
            if (handler->getCommand().find(text) != std::string::npos) {
                return true;
            }
        }
        return false;
    };
}

Actor::Condition isRunning(const std::string& text)
{
    return [text] {
        const Board::CommandHandler* const handler =
            getEngine().getCommandHandlers().getRunnings().getFirst();
        return handler != nullptr && handler->getCommand().find(text) != std::string::npos;
    };
}

template <class Widget>
Widget* find(const QString& name)
{
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && widget->isVisible()) {
            return qobject_cast<Widget*>(widget);
        }
    }
    return nullptr;
}

Actor::Condition isShown(const QString& name)
{
    return [name] { return find<QWidget>(name) != nullptr; };
}

Actor::Action click(const QString& name)
{
    return [name] { find<QAbstractButton>(name)->click(); };
}

void closeWindow()
{
    getPanelWindow()->close();
}

void startLoad(const QString& file)
{
    Kestoboard::showChosenBitstream(*getPanelWindow(), file);
    QMetaObject::invokeMethod(find<QAbstractButton>(QStringLiteral("loadButton")), "click",
                              Qt::QueuedConnection);
}

QString bitstream()
{
    return QStringLiteral("design.ksb");
}

void playLoad(Actor* actor)
{
    actor->when(isIdle, [] { Kestoboard::showChosenBitstream(*getPanelWindow(), bitstream()); })
        .when(
            [] {
                return isIdle() &&
                       Kestoboard::getChosenBitstream(*getPanelWindow()).endsWith(bitstream());
            },
            [] { startLoad(bitstream()); });
}

/// Loads the bitstream of the command line.
void playLoadAndLeave(Actor* actor)
{
    actor
        ->when(
            [] { return isIdle() && !Kestoboard::getChosenBitstream(*getPanelWindow()).isEmpty(); },
            click(QStringLiteral("loadButton")))
        .when(isIdle, closeWindow);
}

void playLeaveDuringTransfer(Actor* actor)
{
    playLoad(actor);
    actor->when(isRunning("chip bitstream load"), closeWindow)
        .when(isShown(QStringLiteral("leaveQuestion")), [] {
            say("asked");
            click(QStringLiteral("leaveButton"))();
        });
}

/// A transfer that was not begun with a button.
void playLeaveDuringTypedTransfer(Actor* actor)
{
    const std::string command = "board spi flash program design.ksb";
    actor
        ->when(isIdle,
               [command] {
                   QTimer::singleShot(0, &getEngine(),
                                      [command] { getEngine().sendCommand(command); });
               })
        .when(isRunning(command), closeWindow)
        .when(isShown(QStringLiteral("leaveQuestion")), [] {
            say("asked");
            click(QStringLiteral("leaveButton"))();
        });
}

/// A transfer that waits for its turn behind a running command.
void playLeaveWithQueuedTransfer(Actor* actor)
{
    actor
        ->when(isIdle,
               [] { QTimer::singleShot(0, &getEngine(), [] { getEngine().setForceBit(true); }); })
        .when(isRunning("force_bit"),
              [] {
                  QTimer::singleShot(0, &getEngine(),
                                     [] { getEngine().sendBitstream("queued.ksb"); });
              })
        .when(isQueued("chip bitstream load"), closeWindow)
        .when(isShown(QStringLiteral("leaveQuestion")), [] {
            say("asked");
            click(QStringLiteral("leaveButton"))();
        });
}

/// From the event loop, as the desktop comes.
void doLater(const Actor::Action& action)
{
    QTimer::singleShot(0, qApp, action);
}

/// What the toolkit does when the manager of the session wants the settings to be saved.
void tellSessionEnd()
{
    emit qApp->commitDataRequest(*qApp->findChild<QSessionManager*>());
    isAnswered = true;
    say("answered");
}

void askToQuit()
{
    QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
}

/// The session lets the panel ask.
void tellSessionEndWithQuestion()
{
    getShutdown().prepareSessionEnd({[] { return true; }, [] { say("cancelled"); }});
    say("answered");
}

void playSessionEndDuringTransfer(Actor* actor, const Actor::Action& answer)
{
    playLoad(actor);
    actor->when(isRunning("chip bitstream load"), [] { doLater(tellSessionEndWithQuestion); })
        .when(isShown(QStringLiteral("leaveQuestion")), [answer] {
            say("asked");
            answer();
        });
}

/// The session ends without a question.
void playSessionEndUnasked(Actor* actor)
{
    playLoad(actor);
    actor->when(isRunning("chip bitstream load"), [] { doLater(tellSessionEnd); })
        .when([] { return isAnswered; },
              [] {
                  if (isShown(QStringLiteral("leaveQuestion"))()) {
                      say("asked");
                  }
                  askToQuit();
              });
}

void release()
{
    QFile file(qEnvironmentVariable("KESTOBOARD_TEST_RELEASE"));
    static_cast<void>(file.open(QIODevice::WriteOnly));
}

/// Changes their mind, lets the transfer come to its end, and leaves then.
void playStay(Actor* actor)
{
    playLoad(actor);
    actor->when(isRunning("chip bitstream load"), closeWindow)
        .when(isShown(QStringLiteral("leaveQuestion")),
              [] {
                  closeWindow();
                  say("asked");
                  click(QStringLiteral("stayButton"))();
                  release();
              })
        .when(isIdle, closeWindow);
}

/// The session lets the panel ask, and the transfer ends before the answer.
void playSessionEndLeaveWhenOver(Actor* actor)
{
    playSessionEndDuringTransfer(actor, release);
    actor->when(
        [] {
            const auto* const question = find<QMessageBox>(QStringLiteral("leaveQuestion"));
            return question != nullptr && question->text().contains(QStringLiteral("any more"));
        },
        click(QStringLiteral("leaveButton")));
}

void playLeaveDuringCommand(Actor* actor)
{
    actor
        ->when(isIdle,
               [] { QTimer::singleShot(0, &getEngine(), [] { getEngine().setForceBit(true); }); })
        .when(isRunning("force_bit"), closeWindow);
}

void playLeaveAtStart(Actor* actor)
{
    actor->when(isShown(QStringLiteral("startupWait")), [] {
        say("waiting");
        click(QStringLiteral("quitButton"))();
    });
}

void playTellChoice(Actor* actor)
{
    actor->when(
        [] { return isIdle() && !Kestoboard::getChosenBitstream(*getPanelWindow()).isEmpty(); },
        [] {
            say(qPrintable(QStringLiteral("chosen ") +
                           Kestoboard::getChosenBitstream(*getPanelWindow())));
            closeWindow();
        });
}

void playThrow(Actor* actor, const Actor::Action& action)
{
    actor->when(isIdle, action).when(isIdle, [] {
        say("goes on");
        closeWindow();
    });
}

void play(Actor* actor, const QString& part)
{
    const QMap<QString, std::function<void(Actor*)>> parts{
        {QStringLiteral("leave-when-idle"), [](Actor* a) { a->when(isIdle, closeWindow); }},
        {QStringLiteral("load"), playLoad},
        {QStringLiteral("load-and-leave"), playLoadAndLeave},
        {QStringLiteral("leave-during-transfer"), playLeaveDuringTransfer},
        {QStringLiteral("leave-with-queued-transfer"), playLeaveWithQueuedTransfer},
        {QStringLiteral("leave-during-typed-transfer"), playLeaveDuringTypedTransfer},
        {QStringLiteral("leave-during-command"), playLeaveDuringCommand},
        {QStringLiteral("leave-at-start"), playLeaveAtStart},
        {QStringLiteral("stay"), playStay},
        {QStringLiteral("tell-choice"), playTellChoice},
        {QStringLiteral("quit-event"), [](Actor* a) { a->when(isIdle, askToQuit); }},
        {QStringLiteral("session-end"),
         [](Actor* a) {
             a->when(isIdle, [] {
                  doLater(tellSessionEnd);
              }).when([] { return isAnswered; }, askToQuit);
         }},
        {QStringLiteral("session-end-and-power-off"),
         [](Actor* a) {
             a->when(isIdle, [] {
                 tellSessionEnd();
                 std::_Exit(EXIT_SUCCESS);
             });
         }},
        {QStringLiteral("session-end-leave"),
         [](Actor* a) { playSessionEndDuringTransfer(a, click(QStringLiteral("leaveButton"))); }},
        {QStringLiteral("session-end-stay"),
         [](Actor* a) {
             playSessionEndDuringTransfer(a, [] {
                 click(QStringLiteral("stayButton"))();
                 release();
             });
             a->when(isIdle, closeWindow);
         }},
        {QStringLiteral("session-end-leave-when-over"), playSessionEndLeaveWhenOver},
        {QStringLiteral("session-end-unasked"), playSessionEndUnasked},
        {QStringLiteral("throw-failure"),
         [](Actor* a) {
             playThrow(a, [] {
                 Orvex::raise(Orvex::Fatal("Something broke"), "play", "panel_actor", __LINE__);
             });
         }},
        {QStringLiteral("throw-standard"),
         [](Actor* a) { playThrow(a, [] { throw std::runtime_error("out of luck"); }); }},
        {QStringLiteral("throw-strange"), [](Actor* a) { playThrow(a, [] { throw 42; }); }},
        {QStringLiteral("nothing"), [](Actor*) {}},
    };
    parts.value(part)(actor);
}

} // namespace

int main(int argc, char** argv)
{
    Kestoboard::PanelApplication::setNames();
    Kestoboard::PanelApplication application(argc, argv);
    const Kestoboard::LastWords lastWords;
    const Kestoboard::ConsolePrinter printer;
    QStringList arguments = QCoreApplication::arguments();
    const QString part = arguments.takeAt(1);
    const Kestoboard::CommandLine commandLine(arguments);
    Orvex::setDebug(commandLine.getOptions().isDebug);
    Actor actor;
    play(&actor, part);
    Kestoboard::PanelSession panelSession(commandLine.getOptions());
    session = &panelSession;
    return panelSession.run();
}
