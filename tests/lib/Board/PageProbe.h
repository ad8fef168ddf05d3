#ifndef BOARD_PAGEPROBE_H
#define BOARD_PAGEPROBE_H

#include "support/Bench.h"
#include "support/ConsoleRecorder.h"
#include "support/Panel.h"

#include <Board/MainWindow.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>

class QComboBox;
class QWidget;
struct QMetaObject;

namespace Test
{

/// The descendant of that class and object name. Ends the test program when there is none.
template <class Child>
Child* getNamed(const QObject& root, const char* name)
{
    auto* const child = root.findChild<Child*>(QLatin1String(name));
    if (child == nullptr) {
        qFatal("there is no %s", name);
    }
    return child;
}

/// The only descendant of that class. Ends the test program when there is none.
template <class Child>
Child* getOnly(const QObject& root)
{
    const auto children = root.findChildren<Child*>();
    if (children.size() != 1) {
        qFatal("there are %d of them", children.size());
    }
    return children.first();
}

/// A panel whose window may be deleted in the middle of a test, also in a wait of its engine.
class FragilePanel
{
public:
    FragilePanel();
    ~FragilePanel();
    FragilePanel(const FragilePanel&) = delete;
    FragilePanel& operator=(const FragilePanel&) = delete;

    /// Null once it has been deleted.
    Board::MainWindow* getWindow() const { return window; }
    Board::KSBaseHandler* getEngine() const { return engine; }

    /// Deletes the window in the event loop in which the tool is found to have received that
    /// command, and then lets held answers go.
    void deleteWindowOnceReceived(Bench* bench, const QString& command);

private:
    QPointer<Board::MainWindow> window;
    Board::KSBaseHandler* const engine;
};

/// Does the work in the event loop in which the tool is found to have received that command: the
/// wait of a command that is held.
void doOnceReceived(Bench* bench, const QString& command, const std::function<void()>& work);

/// Does the work in the next event loop that is entered.
void doInNextWait(const std::function<void()>& work);

/// Replaces the scenario and has the panel list the boards, so that the tool reads it.
void setScenario(Bench* bench, Board::KSBaseHandler* engine, const QString& text);

/// What reached the tool since the last call but for the listings, which the engine's clock adds at
/// any time.
QStringList takeCommands(Bench* bench);

/// What stands in the grid of a widget, in the order in which it was put there. An entry is
/// "row,column rows x columns", the alignment if there is one, the class, and the text of a label
/// or a button or the object name of anything else.
QStringList describeGrid(const QWidget& widget);

/// The spacing, and the minima and stretches that are not 0, of the grid of a widget.
QStringList describeMetrics(const QWidget& widget);

/// The slots and signals that a class adds to its base, in their order, such as
/// "public slot setLeaf(int)".
QStringList describeMethods(const QMetaObject& meta);

/// Whether the theme has restyled the combo box.
bool isEnriched(const QComboBox& comboBox);

/// The margins of the layout of a widget: left, top, right, bottom.
QList<int> getMargins(const QWidget& widget);

} // namespace Test

#endif
