#ifndef BOARD_MAINWINDOW_H
#define BOARD_MAINWINDOW_H

#include <Board/Export.h>

#include <QMainWindow>

class QAction;
class QGridLayout;
class QToolButton;

namespace Board
{

class CommandLineEdit;
class Folio;
class KSBaseHandler;

/// The panel: the pages above, the console below and, in debug mode, the command row between them.
///
/// Before it is made, the application sets `Orvex::console`, `Orvex::theme` and
/// `Zandu::application` and the names that `QSettings` needs; afterwards it shows the window and
/// gives it a title and an icon. The window keeps the one engine and does not release it: it lives
/// until the process ends, unless the application destroys it.
class BOARD_EXPORT MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Starts the engine, builds the widgets and waits, in a nested event loop, for the first
    /// listing of boards.
    ///
    /// @throws Orvex::Critical when the board tool is not on the search path or the transcript
    /// cannot be written in the working directory.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// The pages; null while they are being built.
    Folio* getFolio() const { return folio; }
    /// The engine; not owned by the window's widget tree. Null when it has been destroyed.
    KSBaseHandler* getKSBaseHandler() const { return ksBaseHandler; }

    void buildStatusBar();
    void buildWidgets();

private slots:
    void onSendCommand();
    void onHelp();
    void refreshFileButton();
    void onFileLaunch(QAction* action);

private:
    void buildCommandRow(QWidget* lowerPanel, QGridLayout* grid);
    void makeDefaultAction(QAction* action);

    Folio* folio;
    KSBaseHandler* ksBaseHandler;
    CommandLineEdit* commandLineEdit; ///< null unless debug mode is on
    QToolButton* fileButton;          ///< null unless debug mode is on
};

} // namespace Board

#endif
