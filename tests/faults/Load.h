#ifndef FAULTS_LOAD_H
#define FAULTS_LOAD_H

#include "support/Panel.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <functional>
#include <random>
#include <vector>

namespace Board
{
class KSBaseHandler;
class MainWindow;
} // namespace Board

namespace Test
{

/// Somebody at every control of a panel at once: commands of all types come from timers, from the
/// buttons and boxes of the window, and out of waits that stand on top of each other.
///
/// Half of the commands carry a word of their own that the tool gives back, so that a reply that
/// reaches another caller is seen. The same seed makes the same decisions. GUI thread.
class Load : public QObject
{
    Q_OBJECT

public:
    /// For the window's engine and its poll timer. The panel has to outlive the load.
    Load(const Panel& panel, unsigned seed);

    void start();
    /// Nothing new is begun from here on; what waits comes to its end.
    void stop();
    /// Nothing that was begun waits any more.
    bool isOver() const { return outstanding == 0 && depth == 0; }

    /// What else is done in between, now and then; it may wait for commands as well.
    void addAction(const std::function<void()>& action) { actions.push_back(action); }

    /// How many commands with a word of their own have been created.
    int getWordCount() const { return wordCount; }
    /// The most waits of this load that have stood on top of each other.
    int getGreatestDepth() const { return greatestDepth; }
    /// One line for each reply that did not hold the word of its command.
    const QStringList& getComplaints() const { return complaints; }

private:
    void actAfter(std::chrono::milliseconds interval);
    void act();
    void perform();
    void addControls();
    void addPress(const char* name);
    void addChoice(const char* name);
    std::string makeWord();
    CommandType chooseType();
    void check(const std::string& word, const std::string& reply);
    void sendAndForget();
    void sendAndWait();

    const Panel& panel;
    std::mt19937 random;
    std::vector<std::function<void()>> actions;
    QStringList complaints;
    int wordCount = 0;
    int outstanding = 0; ///< commands with a word that have no reply yet
    bool running = false;
    bool resting = false;
    int depth = 0;
    int greatestDepth = 0;
};

} // namespace Test

#endif
