#include <application/DirectoryModel.h>

#include <foundation/PlainText.h>
#include <foundation/Theme.h>

#include <QFileInfo>
#include <QIcon>
#include <QLocale>

namespace Zandu
{

namespace
{

constexpr int columns = 3;

const QIcon& getIcon(const DirectoryEntry& entry)
{
    if (entry.isDirectory) {
        return Orvex::theme->getIcon("directory");
    }
    const QString suffix = QFileInfo(entry.name).suffix().toLower();
    for (const char* known : {"ksb", "bbs", "bts"}) {
        if (suffix == QLatin1String(known)) {
            return Orvex::theme->getIcon(known);
        }
    }
    return Orvex::theme->getIcon("file");
}

} // namespace

void DirectoryModel::setListing(const DirectoryListing& newListing)
{
    beginResetModel();
    listing = newListing;
    endResetModel();
}

QString DirectoryModel::getPath(const QModelIndex& index) const
{
    return index.isValid() ? QDir(listing.directory).filePath(listing.entries.at(index.row()).name)
                           : QString();
}

bool DirectoryModel::isDirectory(const QModelIndex& index) const
{
    return index.isValid() && listing.entries.at(index.row()).isDirectory;
}

QModelIndex DirectoryModel::find(const QString& name) const
{
    for (int row = 0; row < listing.entries.size(); ++row) {
        if (listing.entries.at(row).name == name) {
            return index(row, 0);
        }
    }
    return QModelIndex();
}

bool DirectoryModel::isTakeable(const QModelIndex& index) const
{
    return index.isValid() && Orvex::isOneLine(listing.entries.at(index.row()).name);
}

Qt::ItemFlags DirectoryModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags all = QAbstractTableModel::flags(index);
    return isTakeable(index) ? all : all & ~Qt::ItemIsSelectable;
}

int DirectoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : listing.entries.size();
}

int DirectoryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant DirectoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return QVariant();
    }
    const DirectoryEntry& entry = listing.entries.at(index.row());
    const auto column = static_cast<DirectoryColumn>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return getText(entry, column);
    case Qt::DecorationRole:
        return column == DirectoryColumn::Name ? QVariant(getIcon(entry)) : QVariant();
    case Qt::TextAlignmentRole:
        return column == DirectoryColumn::Size ? int(Qt::AlignRight | Qt::AlignVCenter)
                                               : int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return Orvex::getLiteral(QDir::toNativeSeparators(getPath(index)));
    default:
        return QVariant();
    }
}

QVariant DirectoryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QVariant();
    }
    switch (static_cast<DirectoryColumn>(section)) {
    case DirectoryColumn::Name:
        return tr("Name");
    case DirectoryColumn::Size:
        return tr("Size");
    case DirectoryColumn::Modified:
        return tr("Modified");
    }
    return QVariant();
}

QString DirectoryModel::getText(const DirectoryEntry& entry, DirectoryColumn column) const
{
    const QLocale locale;
    switch (column) {
    case DirectoryColumn::Name:
        return entry.name;
    case DirectoryColumn::Size:
        return entry.isDirectory ? QString() : locale.formattedDataSize(entry.size, 1);
    case DirectoryColumn::Modified:
        return locale.toString(entry.modified, QLocale::ShortFormat);
    }
    return QString();
}

} // namespace Zandu
