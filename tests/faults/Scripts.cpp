#include "Scripts.h"

#include "support/Bench.h"

#include <QFile>

namespace Test::Scripts
{

namespace
{

const char head[] = "#!/bin/sh\n";
const char answers[] = "while read -r line; do echo 'COMMAND SUCCEEDED' >&2; done\n";

} // namespace

QByteArray getStay()
{
    return "while kill -0 $PPID 2>/dev/null; do sleep 0.02; done\n";
}

QByteArray getPause()
{
    return "while [ ! -e go ] && kill -0 $PPID 2>/dev/null; do sleep 0.02; done\n";
}

QByteArray getLateSearch()
{
    return head + QByteArray(": > asked\n") + getPause() + "command -v ksbase2_cli\n";
}

QByteArray getTool(const QByteArray& lastAct)
{
    return head + QByteArray(answers) + lastAct;
}

QByteArray getIdleTool(const QByteArray& act)
{
    // The signal also ends the reading that it meets.
    return head + QByteArray("act() {\nacted=1\n") + act +
           "}\ntrap act USR1\nwhile read -r line || [ \"$acted\" ]; do\n"
           "[ \"$acted\" ] || echo 'COMMAND SUCCEEDED' >&2\nacted=\ndone\n";
}

QByteArray getStartingTool(const QByteArray& act)
{
    return head + act + ": > done\nexec '" + QFile::encodeName(Bench::getToolDirectory()) +
           "/ksbase2_cli' \"$@\"\n";
}

} // namespace Test::Scripts
