#ifndef BOARD_BROWSEFOLIO_H
#define BOARD_BROWSEFOLIO_H

#include <Board/Export.h>

#include <QListWidget>
#include <QModelIndex>
#include <QWidget>

#include <string>

class QButtonGroup;
class QHBoxLayout;
class QStackedWidget;
class QToolButton;

namespace Zandu
{
class FileSystemBrowser;
}

namespace Board
{

/// The chooser of a bitstream file: the files that were loaded last on one page, the file system on
/// the other, and a button for each page.
///
/// It chooses nothing itself; whoever holds it asks which page shows and what is selected there. A
/// click on a bitstream file is only echoed on the console. GUI thread.
class BOARD_EXPORT BrowseFolio : public QWidget
{
    Q_OBJECT

public:
    class RecentWidget;

    explicit BrowseFolio(QWidget* parent);
    ~BrowseFolio() override;

    /// The position of a page in the stack, or -1.
    long getRecentIndex() const;
    long getBrowseIndex() const;
    /// The position of the page that shows.
    long getCurrentIndex() const;

    /// Enables the button of a page, not the page. A number without a button is no error.
    void enableLeaf(unsigned long index);
    void disableLeaf(unsigned long index);
    /// Clicks the button of a page.
    void raiseLeaf(unsigned long index);

    /// Makes the button of a page, without a parent. `iconName` is a name of the theme.
    QToolButton* createButton(const QString& text, const std::string& iconName, bool checked);

public slots:
    void setLeaf(int index);

private slots:
    void onItemClicked(QModelIndex index);
    void onItemClicked(QListWidgetItem* item);

private:
    friend class BitstreamLeaf;

    void addRecentPage(QHBoxLayout* row);
    void addBrowsePage(QHBoxLayout* row);
    void addButton(QHBoxLayout* row, int id, QToolButton* button);

    QButtonGroup* buttonGroup; ///< never deleted
    QStackedWidget* stackedWidget;
    Zandu::FileSystemBrowser* fileSystemBrowser;
    RecentWidget* recentWidget;
};

/// The list of the files that were loaded last, the most recent first, without those that do not
/// exist at the moment. It does not watch the files: `refresh` looks again.
class BOARD_EXPORT BrowseFolio::RecentWidget : public QListWidget
{
public:
    explicit RecentWidget(BrowseFolio* parent);
    ~RecentWidget() override;

    /// Rebuilds the rows from the settings, which stay as they are.
    void refresh();

    /// The full path of the selected row; empty without a selection.
    ///
    /// @throws Orvex::Fatal when more than one row is selected.
    std::string getSelectedItem() const;

protected:
    /// Keeps the mouse from dragging a selection over the rows.
    void mouseMoveEvent(QMouseEvent* event) override;
};

} // namespace Board

#endif
