#include "faults/Load.h"

#include <Board/BrowseFolio.h>
#include <Board/KSBaseHandler.h>
#include <Board/MonitoringLeaf.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QTimer>

#include <algorithm>

namespace Test
{

namespace
{

const int timerCount = 3;
/// Waits on top of each other; the stack has to bear what stands between them.
const int depthLimit = 12;
/// At so many the load rests, until the queue is all but empty: then low types have their turn.
const int outstandingLimit = 120;
const int restingLimit = 3;
const int burstLimit = 12;

class Level
{
public:
    explicit Level(int* count)
        : depth(count)
    {
        ++*depth;
    }
    ~Level() { --*depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    int* const depth;
};

void fire(QTimer* timer)
{
    // As the clock does it: the receivers find the timer as the sender.
    QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
}

} // namespace

Load::Load(const Panel& loadedPanel, unsigned seed)
    : panel(loadedPanel)
    , random(seed)
{
    // Without a choice the directory is loaded, and the tool refuses it.
    auto* const pages = panel.find<Board::BrowseFolio>();
    pages->raiseLeaf(static_cast<unsigned long>(pages->getBrowseIndex()));
    addControls();
}

void Load::addControls()
{
    for (const char* const name :
         {"basicButton", "monitoringButton", "bitstreamButton", "scopeButton", "resetButton",
          "loadButton", "programFlashButton", "resetLoadButton", "resetCheckBox", "clockCheckBox",
          "forceModeCheckBox"}) {
        addPress(name);
    }
    addChoice("cardComboBox");
    addChoice("modeComboBox");
    QTimer* const poll = panel.getPollTimer();
    addAction([poll] { fire(poll); });
    auto* const monitoring = panel.find<Board::MonitoringLeaf>()->findChild<QTimer*>();
    addAction([monitoring] { fire(monitoring); });
}

void Load::addPress(const char* name)
{
    auto* const button = panel.getWindow()->findChild<QAbstractButton*>(QLatin1String(name));
    if (button == nullptr) {
        qFatal("there is no %s", name);
    }
    addAction([button] { button->click(); });
}

void Load::addChoice(const char* name)
{
    auto* const box = panel.getWindow()->findChild<QComboBox*>(QLatin1String(name));
    if (box == nullptr) {
        qFatal("there is no %s", name);
    }
    addAction([this, box] {
        box->setCurrentIndex(static_cast<int>(random() % static_cast<unsigned>(box->count())));
    });
}

void Load::start()
{
    running = true;
    for (int number = 0; number < timerCount; ++number) {
        actAfter(std::chrono::milliseconds(1 + number));
    }
}

void Load::stop()
{
    running = false;
}

/// Acts again and again: each time by a timer of its own, which fires also while the one before is
/// still waiting.
void Load::actAfter(std::chrono::milliseconds interval)
{
    QTimer::singleShot(interval, this, [this, interval] {
        if (running) {
            actAfter(interval);
            act();
        }
    });
}

void Load::act()
{
    if (outstanding >= outstandingLimit) {
        resting = true;
    } else if (outstanding <= restingLimit) {
        resting = false;
    }
    if (resting) {
        return;
    }
    const Level level(&depth);
    greatestDepth = std::max(greatestDepth, depth);
    perform();
}

void Load::perform()
{
    const bool mayWait = depth < depthLimit;
    const unsigned choice = random() % 16;
    if (choice < 4 && mayWait) {
        sendAndWait();
    } else if (choice < 6 && mayWait) {
        actions[random() % actions.size()]();
    } else {
        for (unsigned count = choice == 6 ? random() % burstLimit : 1; count > 0; --count) {
            sendAndForget();
        }
    }
}

std::string Load::makeWord()
{
    ++wordCount;
    return "word " + std::to_string(wordCount) + ".";
}

CommandType Load::chooseType()
{
    return static_cast<CommandType>(1 + random() % 4);
}

void Load::check(const std::string& word, const std::string& reply)
{
    // The tool does not know the command, and says so with its text.
    if (reply.find('\'' + word + '\'') == std::string::npos) {
        complaints += QString::fromStdString("To '" + word + "' came: " + reply);
    }
}

void Load::sendAndForget()
{
    using Board::CommandHandler;
    const std::string word = makeWord();
    CommandHandler* const handler = CommandHandler::create(chooseType(), word, panel.getEngine());
    ++outstanding;
    // The reply is announced by the worker; the handler may only go on the thread that made it.
    connect(
        handler, &CommandHandler::resultReady, this,
        [this, handler, word] {
            check(word, handler->getResult());
            handler->destroy();
            --outstanding;
        },
        Qt::QueuedConnection);
}

void Load::sendAndWait()
{
    const std::string word = makeWord();
    ++outstanding;
    check(word, panel.run(chooseType(), word));
    --outstanding;
}

} // namespace Test
