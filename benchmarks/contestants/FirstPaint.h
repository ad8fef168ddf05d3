#ifndef BENCHMARKS_FIRSTPAINT_H
#define BENCHMARKS_FIRSTPAINT_H

#include <QObject>

#include <functional>

namespace Bench
{

/// Waits for the first window of the process to be painted. Needs the QApplication.
class FirstPaint : public QObject
{
    Q_OBJECT

public:
    /// The work is done once, in the first turn of the event loop after the paint.
    explicit FirstPaint(std::function<void()> work);

    /// How long the process takes since a moment of the system's monotonic clock, in nanoseconds.
    static double getMillisecondsSince(qint64 moment);
    /// The memory of this process that is in use, in kilobytes.
    static double getResidentKilobytes();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const std::function<void()> work;
};

} // namespace Bench

#endif
