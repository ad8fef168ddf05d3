#ifndef SUPPORT_PANEL_H
#define SUPPORT_PANEL_H

#include <Board/CommandHandler.h>
#include <Board/MainWindow.h>

#include <QString>

#include <memory>

class QTimer;

namespace Board
{
class Folio;
class KSBaseHandler;
} // namespace Board

namespace Test
{

using CommandType = Board::CommandHandler::CommandType;

/// A panel for the time of a test: its window and its engine, ended in order.
///
/// The poll of the boards stands still: a test asks for a listing itself, so that no other comes
/// between.
class Panel
{
public:
    /// Makes the window, which has had its first listing of boards when this returns.
    Panel();
    ~Panel();
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    Board::MainWindow* getWindow() const { return window.get(); }
    Board::KSBaseHandler* getEngine() const { return engine; }
    Board::Folio* getFolio() const;
    /// The stopped timer that polls the boards.
    QTimer* getPollTimer() const;

    /// Sends a command by its handler, waits and returns the reply.
    std::string run(CommandType type, const std::string& command) const;
    /// Deletes the window before the panel ends.
    void closeWindow() { window.reset(); }

    /// The first widget of that class below the window.
    template <class Widget>
    Widget* find() const
    {
        return window->findChild<Widget*>();
    }
    /// The first widget of that class with that text.
    template <class Widget>
    Widget* findByText(const QString& text) const
    {
        for (Widget* const widget : window->findChildren<Widget*>()) {
            if (widget->text() == text) {
                return widget;
            }
        }
        return nullptr;
    }

private:
    std::unique_ptr<Board::MainWindow> window;
    Board::KSBaseHandler* const engine;
};

} // namespace Test

#endif
