#include <application/DirectoryReader.h>

#include <foundation/Descriptors.h>
#include <foundation/HandOff.h>

#include <QCollator>
#include <QDirIterator>
#include <QFileInfo>
#include <QLocale>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace Zandu
{

namespace
{

using std::chrono::milliseconds;

/// A burst of changes is answered once.
constexpr milliseconds changeDelay(200);
/// Nothing is told of a reading that is faster than this.
constexpr milliseconds firstReport(300);
constexpr milliseconds leastPollInterval(3000);
/// Polling takes at most this part of the time.
constexpr int pollShare = 50;

bool isInterrupted()
{
    return QThread::currentThread()->isInterruptionRequested();
}

DirectoryEntry getEntry(const QFileInfo& info)
{
    return DirectoryEntry{info.fileName(), info.isDir(), info.isDir() ? 0 : info.size(),
                          info.lastModified()};
}

/// As a person sorts names: 9 before 10, upper and lower case together.
QCollator getCollator()
{
    // The C locale knows no such order.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

/// Negative, zero or positive, as the first comes before, beside or after the second.
int compare(const DirectoryEntry& first, const DirectoryEntry& second, DirectoryColumn column)
{
    switch (column) {
    case DirectoryColumn::Size:
        return first.size < second.size ? -1 : first.size > second.size;
    case DirectoryColumn::Modified:
        return first.modified < second.modified ? -1 : first.modified > second.modified;
    case DirectoryColumn::Name:
        break;
    }
    return 0;
}

} // namespace

DirectoryReader::DirectoryReader(const DirectoryRequest& directoryRequest)
    : request(directoryRequest)
    , watcher(new QFileSystemWatcher(this))
    , changeTimer(new QTimer(this))
    , pollTimer(new QTimer(this))
{
    changeTimer->setSingleShot(true);
    changeTimer->setInterval(changeDelay);
    pollTimer->setSingleShot(true);
    connect(watcher, &QFileSystemWatcher::directoryChanged, changeTimer, [this] {
        if (!changeTimer->isActive()) {
            changeTimer->start();
        }
    });
    connect(changeTimer, &QTimer::timeout, this, &DirectoryReader::read);
    connect(pollTimer, &QTimer::timeout, this, &DirectoryReader::read);
}

void DirectoryReader::read()
{
    QElapsedTimer clock;
    clock.start();
    const QFileInfo info(request.path);
    DirectoryListing listing;
    listing.directory = info.absoluteFilePath();
    if (!info.exists()) {
        listing.state = DirectoryListing::State::Missing;
    } else if (!info.isDir()) {
        listing.directory = info.absolutePath();
        listing.chosen = info.fileName();
    }
    if (listing.state == DirectoryListing::State::Reading) {
        readEntries(listing);
    }
    if (isInterrupted()) {
        return;
    }
    deliver(std::move(listing));
    if (polling) {
        pollTimer->start(std::max(leastPollInterval, milliseconds(clock.elapsed() * pollShare)));
    }
}

void DirectoryReader::sort(DirectoryColumn column, Qt::SortOrder order)
{
    request.column = column;
    request.order = order;
    if (!delivered) {
        return;
    }
    DirectoryListing listing = latest;
    sortEntries(listing.entries);
    deliver(std::move(listing));
}

void DirectoryReader::setPolling(bool wanted)
{
    polling = wanted;
    if (polling) {
        pollTimer->start(leastPollInterval);
    } else {
        pollTimer->stop();
    }
}

void DirectoryReader::readEntries(DirectoryListing& listing)
{
    const QDir directory(listing.directory);
    const QFileInfo access(listing.directory);
    if (!access.isReadable() || !access.isExecutable()) {
        listing.state = DirectoryListing::State::Unreadable;
        return;
    }
    // A directory that cannot be opened looks empty to what follows.
    if (!Orvex::hasFreeDescriptors(1)) {
        listing.state = DirectoryListing::State::Exhausted;
        return;
    }
    watcher->addPath(listing.directory);

    QElapsedTimer clock;
    clock.start();
    milliseconds nextReport = firstReport;
    bool chosenListed = listing.chosen.isEmpty();
    QDirIterator entries(listing.directory, request.nameFilters,
                         request.filters | QDir::NoDotAndDotDot);
    while (entries.hasNext() && !isInterrupted()) {
        entries.next();
        listing.entries.push_back(getEntry(entries.fileInfo()));
        chosenListed = chosenListed || entries.fileName() == listing.chosen;
        if (!delivered && clock.hasExpired(nextReport.count())) {
            DirectoryListing report = listing;
            sortEntries(report.entries);
            tell(report);
            nextReport = milliseconds(clock.elapsed() * 2);
        }
    }
    if (!chosenListed) {
        listing.entries.push_back(getEntry(QFileInfo(directory, listing.chosen)));
    }
    listing.state = DirectoryListing::State::Complete;
    sortEntries(listing.entries);
}

void DirectoryReader::deliver(DirectoryListing listing)
{
    if (delivered && listing == latest) {
        return;
    }
    latest = std::move(listing);
    delivered = true;
    tell(latest);
}

void DirectoryReader::tell(const DirectoryListing& listing)
{
    Orvex::handOver(this);
    emit listed(listing);
}

void DirectoryReader::sortEntries(QVector<DirectoryEntry>& entries) const
{
    struct Place {
        QCollatorSortKey name;
        int index;
    };
    const QCollator collator = getCollator();
    std::vector<Place> places;
    places.reserve(static_cast<std::size_t>(entries.size()));
    for (int index = 0; index < entries.size(); ++index) {
        places.push_back(Place{collator.sortKey(entries.at(index).name), index});
    }
    const bool ascending = request.order == Qt::AscendingOrder;
    std::sort(places.begin(), places.end(), [&](const Place& first, const Place& second) {
        const DirectoryEntry& one = entries.at(first.index);
        const DirectoryEntry& other = entries.at(second.index);
        if (one.isDirectory != other.isDirectory) {
            return one.isDirectory;
        }
        const int byColumn = compare(one, other, request.column);
        const int byName = first.name.compare(second.name);
        const int verdict = byColumn != 0 ? byColumn
                            : byName != 0 ? byName
                                          : one.name.compare(other.name);
        return ascending ? verdict < 0 : verdict > 0;
    });
    QVector<DirectoryEntry> sorted;
    sorted.reserve(entries.size());
    for (const Place& place : places) {
        sorted.push_back(entries.at(place.index));
    }
    entries = sorted;
}

} // namespace Zandu
