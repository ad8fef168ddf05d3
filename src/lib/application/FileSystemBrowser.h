#ifndef APPLICATION_FILESYSTEMBROWSER_H
#define APPLICATION_FILESYSTEMBROWSER_H

#include <application/Export.h>

#include <foundation/Collection.h>

#include <QDir>
#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <string>

namespace Zandu
{

/// Lets a person walk through directories and choose a file.
class ZANDU_EXPORT FileSystemBrowser : public QWidget
{
    Q_OBJECT

public:
    /// Stands on `path` at first. `filters` say which kinds of entries are listed, "." and ".."
    /// never; `nameFilters` are wildcards that files have to match, directories need not.
    FileSystemBrowser(const QString& path, QDir::Filters filters, const QStringList& nameFilters,
                      QWidget* parent);
    ~FileSystemBrowser() override;

    /// Full paths of what is chosen; empty when nothing is.
    Orvex::Collection<std::string> getSelectedItems() const;

    /// The directory that the browser stands on, absolute.
    QString getPath() const;

    /// Goes to the directory of the file and chooses the file, also when the name filters would
    /// hide it.
    void setSelectedFile(const QString& path);

signals:
    /// The person clicked an entry. The index is the one of its name.
    void itemClicked(const QModelIndex& index);

private:
    QString directory;
    QString chosenFile;
};

} // namespace Zandu

#endif
