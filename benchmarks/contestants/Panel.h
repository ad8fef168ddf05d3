#ifndef BENCHMARKS_PANEL_H
#define BENCHMARKS_PANEL_H

#include <Board/CommandHandler.h>
#include <Board/MainWindow.h>
#include <application/Application.h>
#include <foundation/Console.h>
#include <foundation/Theme.h>

#include <QApplication>

#include <memory>
#include <string>

namespace Board
{
class KSBaseHandler;
} // namespace Board

namespace Bench
{

/// The panel as a program has it, for the time of a measurement: globals, window, engine. The
/// window is not shown, and the poll of the boards stands still.
class Panel
{
public:
    Panel(int& argc, char** argv);
    ~Panel();
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    Board::MainWindow* getWindow() const { return window.get(); }
    Board::KSBaseHandler* getEngine() const { return engine; }

    /// Sends a command as its users do and waits for the reply. Returns the size of that.
    std::size_t exchange(const std::string& command) const;

private:
    QApplication toolkit;
    Orvex::Console console;
    Orvex::Theme theme;
    Zandu::Application application;
    std::unique_ptr<Board::MainWindow> window;
    Board::KSBaseHandler* engine;
};

} // namespace Bench

#endif
