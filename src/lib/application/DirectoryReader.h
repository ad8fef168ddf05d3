#ifndef APPLICATION_DIRECTORYREADER_H
#define APPLICATION_DIRECTORYREADER_H

#include <application/DirectoryListing.h>

#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace Zandu
{

/// Reads a directory, sorts it and reads it again when it has changed.
///
/// Lives on a thread of its own, so that a large directory or a slow disk keeps nobody waiting; the
/// thread's request for interruption ends a reading between two entries.
class DirectoryReader : public QObject
{
    Q_OBJECT

public:
    explicit DirectoryReader(const DirectoryRequest& directoryRequest);

    void read();
    void sort(DirectoryColumn column, Qt::SortOrder order);
    /// Whether changes are looked for that the system does not tell of, such as those of a file's
    /// size or of a remote disk.
    void setPolling(bool wanted);

signals:
    /// At first, and whenever something differs from the listing before. A reading that takes long
    /// is told of while it goes on.
    void listed(const Zandu::DirectoryListing& listing);

private:
    void readEntries(DirectoryListing& listing);
    void deliver(DirectoryListing listing);
    void tell(const DirectoryListing& listing);
    void sortEntries(QVector<DirectoryEntry>& entries) const;

    DirectoryRequest request;
    DirectoryListing latest;
    bool delivered = false;
    bool polling = false;
    QFileSystemWatcher* watcher;
    QTimer* changeTimer;
    QTimer* pollTimer;
};

} // namespace Zandu

#endif
