#ifndef FAULTS_STAGE_H
#define FAULTS_STAGE_H

#include "support/TestApplication.h"

#include <Board/KSBaseHandler.h>
#include <Board/MainWindow.h>

#include <QPointer>

#include <memory>

namespace Test
{

/// The window of an engine, also one that is just being made; of any engine when that is null. Null
/// when there is none.
Board::MainWindow* findWindow(const Board::KSBaseHandler* engine = nullptr);

/// A window and its engine in debug mode, each of which may end before the other. The poll of the
/// boards stands still.
class Stage
{
public:
    Stage();
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    Board::MainWindow* getWindow() const { return window.get(); }
    Board::KSBaseHandler* getEngine() const { return engine; }
    void deleteWindow() { window.reset(); }
    void destroyEngine();

private:
    const DebugMode debugMode;
    std::unique_ptr<Board::MainWindow> window;
    QPointer<Board::KSBaseHandler> engine;
};

} // namespace Test

#endif
