#ifndef FAULTS_QUEUECHECKER_H
#define FAULTS_QUEUECHECKER_H

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace Test
{

/// Judges an order of service by the rule of the queue alone: when the tool becomes free, it gets
/// the waiting command of the lowest type, and of those the one that came first.
///
/// It knows nothing of the engine: it is told what came and when, and what the tool received.
class QueueChecker
{
public:
    /// A command has come, after all that were told before.
    ///
    /// `choice` is the first choice that certainly took it into account: the n-th choice, counted
    /// from 0, is the one that fell on the n-th command of the order of service. At `choice` - 1
    /// it may have been there or not; at any choice before it was not.
    void arrive(int type, const QString& text, int choice);

    /// What is wrong with that order of service; empty when nothing is. Every command that has come
    /// has to be in it exactly once.
    QString check(const QStringList& served);

    std::size_t getArrivalCount() const { return arrivals.size(); }

private:
    struct Arrival {
        int type;
        QString text;
        int choice;
    };
    using Number = std::size_t; ///< of an arrival, from 0
    using Place = std::pair<int, Number>;

    void admit(int choice);
    QString serve(int choice, const QString& text);
    QString describe(Number number) const;
    QString describeForgotten() const;

    std::vector<Arrival> arrivals;
    QHash<QString, QList<Number>> unserved;
    std::set<Place> waiting;
    Number nextToAdmit = 0;
    std::vector<bool> isServed;
};

} // namespace Test

#endif
