#ifndef APPLICATION_DIRECTORYWATCH_H
#define APPLICATION_DIRECTORYWATCH_H

#include <application/DirectoryListing.h>

#include <QObject>

class QThread;

namespace Zandu
{

class DirectoryReader;

/// The contents of one directory, read and followed in the background. GUI thread only.
class DirectoryWatch : public QObject
{
    Q_OBJECT

public:
    /// Begins to read at once.
    DirectoryWatch(const DirectoryRequest& request, QObject* parent);
    /// Does not wait for a disk that does not answer; what hangs there is left to end by itself.
    ~DirectoryWatch() override;

    void sort(DirectoryColumn column, Qt::SortOrder order);
    void setPolling(bool wanted);

signals:
    /// See DirectoryReader::listed.
    void listed(const Zandu::DirectoryListing& listing);

private:
    void tellLack(const QString& path);

    QThread* thread;
    DirectoryReader* reader; ///< null when the thread could not be started
};

} // namespace Zandu

#endif
