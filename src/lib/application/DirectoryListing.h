#ifndef APPLICATION_DIRECTORYLISTING_H
#define APPLICATION_DIRECTORYLISTING_H

#include <QDateTime>
#include <QDir>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Zandu
{

/// What a directory view shows of a file or directory.
struct DirectoryEntry {
    QString name;
    bool isDirectory = false;
    qint64 size = 0; // in bytes
    QDateTime modified;

    bool operator==(const DirectoryEntry& other) const
    {
        return name == other.name && isDirectory == other.isDirectory && size == other.size &&
               modified == other.modified;
    }
};

/// The columns of a directory view, which its entries are sorted by.
enum class DirectoryColumn { Name, Size, Modified };

/// What is asked of a directory.
struct DirectoryRequest {
    /// A directory, or a file in it that is to be listed whatever the name filters say.
    QString path;
    QDir::Filters filters;
    QStringList nameFilters;
    DirectoryColumn column = DirectoryColumn::Name;
    Qt::SortOrder order = Qt::AscendingOrder;
};

/// What is known of a directory.
struct DirectoryListing {
    enum class State {
        Reading,    ///< there is more to come
        Complete,   ///< these are all
        Missing,    ///< there is nothing of that path
        Unreadable, ///< the person may not read it
        Exhausted,  ///< the system lacks what a reading needs, for the moment
    };

    State state = State::Reading;
    /// Absolute. The requested path where there is nothing.
    QString directory;
    /// The name of the file that was requested; empty when a directory was.
    QString chosen;
    /// Directories before files, each sorted as requested.
    QVector<DirectoryEntry> entries;

    bool operator==(const DirectoryListing& other) const
    {
        return state == other.state && directory == other.directory && chosen == other.chosen &&
               entries == other.entries;
    }
};

} // namespace Zandu

Q_DECLARE_METATYPE(Zandu::DirectoryListing)

#endif
