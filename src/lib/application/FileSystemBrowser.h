#ifndef APPLICATION_FILESYSTEMBROWSER_H
#define APPLICATION_FILESYSTEMBROWSER_H

#include <application/Export.h>

#include <foundation/Collection.h>

#include <QDir>
#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <string>

class QLabel;
class QTreeView;

namespace Zandu
{

class DirectoryModel;
class DirectoryWatch;
class NoticeBar;
class PathField;
struct DirectoryListing;
struct DirectoryRequest;

/// Lets a person walk through directories and choose a file.
///
/// Directories are read in the background: the browser stays on the directory that it shows until
/// another one has been read, and says so when that fails. It follows changes on the disk. GUI
/// thread only.
class ZANDU_EXPORT FileSystemBrowser : public QWidget
{
    Q_OBJECT

public:
    /// Stands on `path` at first, or in the home directory when no command can name `path`.
    /// `filters` say which kinds of entries are listed, "." and ".." never; `nameFilters` are
    /// wildcards that files have to match, directories need not.
    FileSystemBrowser(const QString& path, QDir::Filters entryFilters,
                      const QStringList& entryNameFilters, QWidget* parent);
    ~FileSystemBrowser() override;

    /// Full paths of what is chosen; empty when nothing is. A path that holds a line break is never
    /// among them: in a command it would begin another one.
    Orvex::Collection<std::string> getSelectedItems() const;

    /// The directory that the browser stands on, absolute.
    QString getPath() const;

    /// Goes to the directory of the file and chooses the file, also when the name filters would
    /// hide it. It counts as chosen at once; when it turns out not to be there, nothing is chosen
    /// and the person is told.
    void setSelectedFile(const QString& path);

    /// Goes to a directory, or to the directory of a file and chooses that. A path that no command
    /// can name is refused, and the person is told.
    void open(const QString& path);

signals:
    /// The person clicked an entry. The index is the one of its name.
    void itemClicked(const QModelIndex& index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildTree();
    void createSortActions();
    void showContextMenu(const QPoint& place);
    QWidget* createPathRow();
    void openParent();
    void activate(const QModelIndex& index);
    void onOpeningListed(const DirectoryListing& listing);
    void arrive(const DirectoryListing& listing);
    void refuse(const DirectoryListing& listing);
    void refuseToTake(const QString& path);
    void onClicked(const QModelIndex& index);
    void onShownListed(const DirectoryListing& listing);
    void displayLatest();
    void display(const DirectoryListing& listing);
    void select(const QString& name);
    void sortBy(int column);
    void sort();
    DirectoryRequest getRequest(const QString& path) const;
    QString getRemark(const DirectoryListing& listing) const;
    QString getSelectedPath() const;

    QString directory;
    QDir::Filters filters;
    QStringList nameFilters;
    QString chosenFile;       // counts as selected until it is listed
    bool isArranging = false; // the selection changes, and not by the person
    PathField* pathField;
    QTreeView* tree;
    QLabel* remark;
    NoticeBar* notice;
    DirectoryModel* model;
    DirectoryWatch* shown = nullptr;
    DirectoryWatch* opening = nullptr;
    QTimer openingTimer; // until the person is told that a directory takes its time
    std::unique_ptr<DirectoryListing> latest; // awaits to be displayed
    QTimer displayTimer;
    int displayDelays = 0;
};

} // namespace Zandu

#endif
