#ifndef BOARD_FOLIO_H
#define BOARD_FOLIO_H

#include <Board/Export.h>

#include <QWidget>

#include <string>

class QButtonGroup;
class QComboBox;
class QStackedWidget;
class QToolButton;
class QVBoxLayout;

namespace Board
{

class BasicLeaf;
class BitstreamLeaf;
class KSBaseHandler;
class MainWindow;
class MonitoringLeaf;
class ScopeLeaf;

/// The pages of the panel: a column of exclusive buttons, a stack with one page for each, and the
/// combo box that picks the board.
///
/// Everything runs on the GUI thread. Selecting a board and initializing pages wait for the board
/// tool in nested event loops; their exceptions leave the operation that was called.
class BOARD_EXPORT Folio : public QWidget
{
    Q_OBJECT

public:
    explicit Folio(QWidget* parent);
    ~Folio() override;

    /// The nearest window of the panel above, or null.
    MainWindow* getMainWindow() const;
    /// The engine of that window, or null without a window. Not owned.
    KSBaseHandler* getKSBaseHandler() const;

    /// The position of a page in the stack, or -1.
    long getBasicIndex() const;
    long getMonitoringIndex() const;
    long getBitstreamIndex() const;
    long getScopeIndex() const;
    /// The position of the page that shows; -1 for an empty stack.
    long getCurrentIndex() const;

    /// Loads the pages that show the state of the selected board: Basic, then Monitoring.
    void initialize();

    /// Enables the button of a page, not the page. A number without a button is no error.
    void enableLeaf(unsigned long index);
    /// Disables the button of a page; the page can still be shown by `setLeaf`.
    void disableLeaf(unsigned long index);
    /// Clicks the button of a page.
    void raiseLeaf(unsigned long index);

    /// Makes the button of a page, without a parent. `iconName` is a name of the theme.
    QToolButton* createButton(const QString& text, const std::string& iconName, bool checked);

    /// Fills the combo box from the engine's boards, without telling `selectCard`. The first boards
    /// after a time with none initialize the pages.
    void refreshCardComboBox();

public slots:
    void setLeaf(int index);

private slots:
    void selectCard(int index);

private:
    template <class Leaf>
    void addLeaf(Leaf*& leaf, QVBoxLayout* column, int id, const QString& text,
                 const std::string& iconName, bool checked);
    QWidget* buildButtonColumn();
    void addCards();

    BasicLeaf* basicLeaf;
    MonitoringLeaf* monitoringLeaf;
    BitstreamLeaf* bitstreamLeaf;
    ScopeLeaf* scopeLeaf;
    QButtonGroup* buttonGroup; ///< never deleted
    QStackedWidget* stackedWidget;
    QComboBox* cardComboBox;
};

} // namespace Board

#endif
