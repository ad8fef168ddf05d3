#ifndef FAULTS_FOOTPRINT_H
#define FAULTS_FOOTPRINT_H

#include <QObject>
#include <QString>
#include <QVector>

namespace Test
{

/// What this process holds at a moment.
struct Footprint {
    qint64 residentKiB = 0;  ///< memory, after what is free has been given back
    qint64 allocatedKiB = 0; ///< of it on the heap and in use
    int descriptors = 0;
    int threads = 0;
    int timers = 0;  ///< below the roots and all windows
    int objects = 0; ///< likewise, timers and all

    /// Of a panel at rest. The roots are objects without a window, each with all below it.
    static Footprint measure(const QVector<const QObject*>& roots);
    /// Whether all but the memory is the same.
    bool hasSameCounts(const Footprint& other) const;
    QString toText() const;
};

/// The resident memory of any process, in KiB; 0 when it cannot be read.
qint64 getResidentKiB(qint64 process);

} // namespace Test

#endif
