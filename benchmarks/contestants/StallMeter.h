#ifndef BENCHMARKS_STALLMETER_H
#define BENCHMARKS_STALLMETER_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace Bench
{

/// How long the event loop of this thread served nobody at a stretch since the construction: a
/// timer of one millisecond is asked how much later than that it was served.
class StallMeter : public QObject
{
    Q_OBJECT

public:
    StallMeter();

    /// Serves events for a moment longer: what the work before has left to later turns, above all
    /// to paint what has changed, counts too.
    void settle();
    /// The longest stall so far, the one that may be under way included.
    double getLongestMilliseconds() const;

private:
    void look();

    QTimer timer;
    QElapsedTimer sinceLook;
    qint64 longest;
};

} // namespace Bench

#endif
