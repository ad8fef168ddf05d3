#include <application/DirectoryWatch.h>

#include <application/DirectoryReader.h>
#include <foundation/HandOff.h>

#include <QDeadlineTimer>
#include <QMetaObject>
#include <QThread>

#include <chrono>

namespace Zandu
{

namespace
{

constexpr std::chrono::milliseconds farewell(100);

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
    thread->start(QThread::LowPriority);
}

DirectoryWatch::~DirectoryWatch()
{
    thread->requestInterruption();
    thread->quit();
    if (thread->wait(QDeadlineTimer(farewell))) {
        delete thread;
    }
}

void DirectoryWatch::sort(DirectoryColumn column, Qt::SortOrder order)
{
    QMetaObject::invokeMethod(
        reader, Orvex::HandedWork([=, target = reader] { target->sort(column, order); }));
}

void DirectoryWatch::setPolling(bool wanted)
{
    QMetaObject::invokeMethod(
        reader, Orvex::HandedWork([=, target = reader] { target->setPolling(wanted); }));
}

} // namespace Zandu
