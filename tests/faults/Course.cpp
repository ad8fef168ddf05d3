#include "Course.h"

#include <algorithm>

namespace Test
{

namespace
{

const QLatin1String inner("  ");

/// The place among the lines at which the verdict of the state stands.
int getStep(State state)
{
    if (isBringUp(state)) {
        return 1 + int(state) - int(State::BringUpSelect);
    }
    switch (state) {
    case State::FirstListing:
    case State::Help:
    case State::Capture:
        return 1;
    case State::CommandFile:
        return 4;
    default:
        break;
    }
    return 0;
}

Course getBringUp()
{
    return {{"Connected Borealis", "Board succesfully selected",
             "Mode successfully set to Jtag only", "Clock bit successfully set to on",
             "Reset bit successfully set to on", "Reset bit successfully set to off",
             "Board succesfully selected"},
            {}};
}

/// The verdict of a tool that refuses, in place of the usual one.
QString getFailure(State state)
{
    switch (state) {
    case State::BringUpSelect:
    case State::BringUpRestore:
    case State::Select:
        return "E: Selection failed";
    case State::BringUpMode:
    case State::SetMode:
        return "E: Mode change failed";
    case State::BringUpClock:
    case State::SetClock:
        return "E: Setting of clock bit failed";
    case State::BringUpReset:
    case State::BringUpRelease:
    case State::SetReset:
        return "E: Reset failed";
    case State::SetForceBit:
    case State::Nested:
        return "E: Setting of force bit failed";
    case State::ForceBit:
        return "E: Refused by the board";
    case State::Flash:
        return "E: Program flash memory failed";
    case State::Load:
        return "E: Bitstream failed";
    case State::ErrorHandler:
        return "E: Error handler configuration failed";
    default:
        break;
    }
    return {};
}

Course getTold(State state)
{
    Course course = getUsualCourse(state);
    if (course.lines.isEmpty()) {
        course.lines += getFailure(state);
    } else {
        course.lines[getStep(state)] = getFailure(state);
    }
    return course;
}

Course getPassed(Fault fault, State state)
{
    const QString mark = state == State::Mode      ? ""
                         : fault == Fault::Refused ? " ... FAILED"
                                                   : " ... SUCCEEDED";
    const QString head = fault == Fault::Refused  ? "Error: Refused by the board"
                         : fault == Fault::Before ? "Notice"
                                                  : "noise";
    Course course = getUsualCourse(state);
    if (course.lines.isEmpty()) {
        return {{}, {"read: " + head + mark}};
    }
    course.lines[getStep(state)] = inner + head + mark;
    return course;
}

Course getWaiting(State state)
{
    Course course{getUsualCourse(state).lines.mid(0, getStep(state)), {}};
    const QString failure = QLatin1String(endedWait);
    if (isGuarded(state)) {
        course.lines += inner + QLatin1String("E: ") + failure;
    } else {
        course.results += "thrown: " + failure;
    }
    return course;
}

bool isOfAReply(const QString& line)
{
    return line.startsWith(inner) && !line.startsWith("  Executing command '") &&
           !line.startsWith("  E: ");
}

QString getMark(const QString& reply)
{
    return reply.contains("COMMAND SUCCEEDED") ? QStringLiteral(" ... SUCCEEDED")
           : reply.contains("COMMAND FAILED")  ? QStringLiteral(" ... FAILED")
                                               : QString();
}

} // namespace

const char endedWait[] = "The wait for a reply has ended without one";

bool operator==(const Course& left, const Course& right)
{
    return left.lines == right.lines && left.results == right.results;
}

Course getUsualCourse(State state)
{
    switch (state) {
    case State::FirstListing:
        return {{"Kestoboard succesfully launched", "Connected Aurora",
                 "Board succesfully selected", "Mode successfully set to Jtag only",
                 "Clock bit successfully set to on", "Reset bit successfully set to on",
                 "Reset bit successfully set to off"},
                {}};
    case State::Mode:
        return {{}, {"read: Jtag only"}};
    case State::ForceBit:
        return {{}, {"read: clear"}};
    case State::Monitor:
        return {{}, {"read: Core: steady ... SUCCEEDED"}};
    case State::SetMode:
        return {{"Mode successfully set to Jtag only"}, {}};
    case State::SetReset:
        return {{"Reset bit successfully set to on"}, {}};
    case State::SetClock:
        return {{"Clock bit successfully set to off"}, {}};
    case State::SetForceBit:
        return {{"Force bit successfully set to off"}, {}};
    case State::Select:
        return {{"Board succesfully selected"}, {}};
    case State::Flash:
        return {{"Program flash memory succeeded"}, {}};
    case State::Load:
        return {{"Bitstream successfully sent"}, {}};
    case State::ErrorHandler:
        return {{"Error handler successfully configured"}, {}};
    case State::Raw:
        return {{}, {"read: Commands of the board tool ... SUCCEEDED"}};
    case State::Help:
        return {{"help", "  Commands of the board tool ... SUCCEEDED"}, {}};
    case State::CommandFile:
        return {{"Executing file 'steps.cmd'", "  Executing command 'board get mode'",
                 "  Jtag only ... SUCCEEDED", "  Executing command 'board get force_bit'",
                 "  Forcebit is not set ... SUCCEEDED",
                 "  Executing command 'board set force_bit off'", "  OK ... SUCCEEDED"},
                {}};
    case State::Capture:
        return {{"Capturing in trace.vcd", "  Captured 256 periods into trace.vcd ... SUCCEEDED"},
                {}};
    case State::Nested:
        return {{"Force bit successfully set to off"},
                {"read: Core: steady ... SUCCEEDED", "listed"}};
    default:
        break;
    }
    return isBringUp(state) ? getBringUp() : Course();
}

Course getExpectedCourse(Outcome outcome, Fault fault, State state)
{
    switch (outcome) {
    case Outcome::Told:
        return getTold(state);
    case Outcome::Passed:
        return getPassed(fault, state);
    case Outcome::Forgotten:
        return {{state == State::FirstListing ? "Kestoboard succesfully launched"
                                              : "Disconnected Aurora"},
                {}};
    case Outcome::Thrown:
        return {{}, {"thrown: Should not be here"}};
    case Outcome::Waits:
        return getWaiting(state);
    default:
        break;
    }
    return getUsualCourse(state);
}

QStringList abridge(const QStringList& lines)
{
    QStringList abridged;
    QStringList reply;
    const auto endReply = [&] {
        if (!reply.isEmpty()) {
            abridged += inner + getSummary(reply.join('\n'));
            reply.clear();
        }
    };
    for (const QString& line : lines) {
        if (isOfAReply(line)) {
            reply += line.mid(inner.size());
            continue;
        }
        endReply();
        if (!line.startsWith("Empty result")) {
            abridged += line.contains("E: ") ? line.section(" [", 0, 0) : line;
        }
    }
    endReply();
    return abridged;
}

QString getHead(const QString& reply)
{
    const QString line = reply.section(QLatin1Char('\n'), 0, 0);
    const bool isNoise = std::any_of(line.begin(), line.end(), [](QChar character) {
        return !character.isPrint() || character == QChar::ReplacementCharacter;
    });
    return isNoise ? QStringLiteral("noise") : line;
}

QString getSummary(const QString& reply)
{
    return getHead(reply) + getMark(reply);
}

} // namespace Test
