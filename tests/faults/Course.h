#ifndef FAULTS_COURSE_H
#define FAULTS_COURSE_H

#include "FaultMatrix.h"
#include "State.h"

#include <QStringList>

namespace Test
{

/// What came of a state.
struct Course {
    QStringList lines;   ///< what the console said
    QStringList results; ///< what was read, and what was thrown
};

bool operator==(const Course& left, const Course& right);

/// What is thrown when a wait ends without a reply.
extern const char endedWait[];

/// The course with a healthy tool.
Course getUsualCourse(State state);
/// The course that is meant by the outcome of a fault, its lines abridged. A wait is one that ends
/// with its engine.
Course getExpectedCourse(Outcome outcome, Fault fault, State state);

/// Lines of the console with each reply that is shown there in one line: its first line and its
/// mark. Reports of the worker, and places in the source, are left out.
QStringList abridge(const QStringList& lines);

/// A reply in short: its first line, "noise" where that cannot be read, and its mark.
QString getSummary(const QString& reply);
/// The first line alone.
QString getHead(const QString& reply);

} // namespace Test

#endif
