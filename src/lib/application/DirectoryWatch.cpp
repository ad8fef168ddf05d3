#include <application/DirectoryWatch.h>

#include <application/DirectoryReader.h>
#include <foundation/Descriptors.h>
#include <foundation/HandOff.h>

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QMetaObject>
#include <QSet>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <utility>

namespace Zandu
{

namespace
{

constexpr std::chrono::milliseconds farewell(100);
/// At the exit there is no later: whatever is not held up by a disk has ended after this.
constexpr std::chrono::milliseconds lastFarewell(1000);
/// For the event loop of the thread, for the notices of changes and for the directory itself.
constexpr int readerDescriptors = 3;

/// Ends a thread that reads, unless it hangs on a disk that does not answer. Tells whether it
/// ended.
bool end(QThread* thread, std::chrono::milliseconds patience)
{
    thread->requestInterruption();
    thread->quit();
    return thread->wait(QDeadlineTimer(patience));
}

/// The threads that read at the moment. A process that exits while its widgets still stand ends
/// them first: they use what the exit destroys.
class ReadingThreads
{
public:
    ReadingThreads() = default;
    ReadingThreads(const ReadingThreads&) = delete;
    ReadingThreads& operator=(const ReadingThreads&) = delete;
    ~ReadingThreads()
    {
        for (QThread* const thread : threads) {
            end(thread, lastFarewell);
        }
    }

    void add(QThread* thread) { threads.insert(thread); }
    void remove(QThread* thread) { threads.remove(thread); }

private:
    QSet<QThread*> threads;
};

/// Made at the first use, and so ended by the exit before all that is older.
ReadingThreads& getReadingThreads()
{
    static ReadingThreads readingThreads;
    return readingThreads;
}

} // namespace

DirectoryWatch::DirectoryWatch(const DirectoryRequest& request, QObject* parent)
    : QObject(parent)
    , thread(new QThread)
    , reader(new DirectoryReader(request))
{
    qRegisterMetaType<DirectoryListing>();
    reader->moveToThread(thread);
    connect(thread, &QThread::started, reader, &DirectoryReader::read);
    connect(thread, &QThread::finished, reader, &QObject::deleteLater);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    connect(reader, &DirectoryReader::listed, this,
            [this, source = reader](const DirectoryListing& listing) {
                Orvex::takeOver(source);
                emit listed(listing);
            });
    if (Orvex::hasFreeDescriptors(readerDescriptors)) {
        thread->start(QThread::LowPriority);
        getReadingThreads().add(thread);
    }
    if (!thread->isRunning() && !thread->isFinished()) {
        delete std::exchange(reader, nullptr);
        tellLack(request.path);
    }
}

DirectoryWatch::~DirectoryWatch()
{
    if (end(thread, farewell)) {
        getReadingThreads().remove(thread);
        delete thread;
    } else {
        connect(thread, &QObject::destroyed,
                [hanging = thread] { getReadingThreads().remove(hanging); });
    }
}

/// Tells, as late as any listing, that nothing can be read.
void DirectoryWatch::tellLack(const QString& path)
{
    DirectoryListing listing;
    listing.state = DirectoryListing::State::Exhausted;
    listing.directory = QFileInfo(path).absoluteFilePath();
    QTimer::singleShot(0, this, [this, listing] { emit listed(listing); });
}

void DirectoryWatch::sort(DirectoryColumn column, Qt::SortOrder order)
{
    if (reader == nullptr) {
        return;
    }
    QMetaObject::invokeMethod(
        reader, Orvex::HandedWork([=, target = reader] { target->sort(column, order); }));
}

void DirectoryWatch::setPolling(bool wanted)
{
    if (reader == nullptr) {
        return;
    }
    QMetaObject::invokeMethod(
        reader, Orvex::HandedWork([=, target = reader] { target->setPolling(wanted); }));
}

} // namespace Zandu
