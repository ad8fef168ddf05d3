#ifndef SUPPORT_PANEL_H
#define SUPPORT_PANEL_H

#include <Board/MainWindow.h>

#include <memory>

namespace Board
{
class Folio;
class KSBaseHandler;
} // namespace Board

namespace Test
{

/// A panel for the time of a test: its window and its engine, ended in order.
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

    /// The first widget of that class below the window, by class alone or by its text.
    template <class Widget>
    Widget* find() const
    {
        return window->findChild<Widget*>();
    }
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
