#include "faults/QueueChecker.h"

namespace Test
{

void QueueChecker::arrive(int type, const QString& text, int choice)
{
    unserved[text] += arrivals.size();
    arrivals.push_back({type, text, choice});
    isServed.push_back(false);
}

QString QueueChecker::check(const QStringList& served)
{
    for (int choice = 0; choice < served.size(); ++choice) {
        admit(choice);
        const QString complaint = serve(choice, served.at(choice));
        if (!complaint.isEmpty()) {
            return complaint;
        }
    }
    return describeForgotten();
}

/// Lets those wait that this choice certainly took into account.
void QueueChecker::admit(int choice)
{
    for (; nextToAdmit < arrivals.size() && arrivals[nextToAdmit].choice <= choice; ++nextToAdmit) {
        if (!isServed[nextToAdmit]) {
            waiting.insert({arrivals[nextToAdmit].type, nextToAdmit});
        }
    }
}

QString QueueChecker::serve(int choice, const QString& text)
{
    QList<Number>& candidates = unserved[text];
    if (candidates.isEmpty()) {
        return QStringLiteral("Choice %1: '%2' was not waiting").arg(choice).arg(text);
    }
    // Of the same text and type the one that came first is to be served first.
    const Number number = candidates.takeFirst();
    const Arrival& arrival = arrivals[number];
    if (arrival.choice - 1 > choice) {
        return QStringLiteral("Choice %1: %2 had not come").arg(choice).arg(describe(number));
    }
    const Place place(arrival.type, number);
    if (!waiting.empty() && *waiting.begin() < place) {
        return QStringLiteral("Choice %1: %2 went ahead of %3")
            .arg(choice)
            .arg(describe(number), describe(waiting.begin()->second));
    }
    waiting.erase(place);
    isServed[number] = true;
    return {};
}

QString QueueChecker::describe(Number number) const
{
    return QStringLiteral("'%1' (arrival %2, type %3)")
        .arg(arrivals[number].text)
        .arg(number)
        .arg(arrivals[number].type);
}

QString QueueChecker::describeForgotten() const
{
    for (Number number = 0; number < arrivals.size(); ++number) {
        if (!isServed[number]) {
            return describe(number) + QStringLiteral(" was never served");
        }
    }
    return {};
}

} // namespace Test
