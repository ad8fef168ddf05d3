#ifndef APPLICATION_DIRECTORYMODEL_H
#define APPLICATION_DIRECTORYMODEL_H

#include <application/DirectoryListing.h>

#include <QAbstractTableModel>

namespace Zandu
{

/// The listing of a directory as a table of name, size and date.
class DirectoryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setListing(const DirectoryListing& newListing);

    /// The full path of an entry.
    QString getPath(const QModelIndex& index) const;
    bool isDirectory(const QModelIndex& index) const;
    /// The index of the name; invalid when there is no such entry.
    QModelIndex find(const QString& name) const;

    /// Whether the entry can be a part of a command. One that cannot is listed, and never selected.
    bool isTakeable(const QModelIndex& index) const;

    Qt::ItemFlags flags(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString getText(const DirectoryEntry& entry, DirectoryColumn column) const;

    DirectoryListing listing;
};

} // namespace Zandu

#endif
