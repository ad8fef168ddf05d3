#include "faults/Footprint.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <QWidget>

#include <malloc.h>
#include <unistd.h>

namespace Test
{

namespace
{

int countEntries(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

} // namespace

Footprint Footprint::measure(const QVector<const QObject*>& roots)
{
    QVector<const QObject*> all = roots;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->parent() == nullptr) {
            all += window;
        }
    }
    Footprint footprint;
    for (const QObject* const root : all) {
        footprint.objects += 1 + root->findChildren<QObject*>().size();
        footprint.timers += root->findChildren<QTimer*>().size();
    }
    footprint.descriptors = countEntries(QStringLiteral("/proc/self/fd"));
    footprint.threads = countEntries(QStringLiteral("/proc/self/task"));
    ::malloc_trim(0);
    footprint.residentKiB = Test::getResidentKiB(::getpid());
    const struct mallinfo2 memory = ::mallinfo2();
    footprint.allocatedKiB = qint64(memory.uordblks + memory.hblkhd) / 1024;
    return footprint;
}

bool Footprint::hasSameCounts(const Footprint& other) const
{
    return descriptors == other.descriptors && threads == other.threads && timers == other.timers &&
           objects == other.objects;
}

QString Footprint::toText() const
{
    return QStringLiteral("%1 KiB resident, %2 KiB allocated, %3 descriptors, %4 threads, "
                          "%5 timers, %6 objects")
        .arg(residentKiB)
        .arg(allocatedKiB)
        .arg(descriptors)
        .arg(threads)
        .arg(timers)
        .arg(objects);
}

qint64 getResidentKiB(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/statm").arg(process));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    // The second number is the resident pages.
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE) / 1024;
}

} // namespace Test
