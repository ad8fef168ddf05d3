#ifndef KESTOBOARD_TESTS_SUPPORT_RUNSIZE_H
#define KESTOBOARD_TESTS_SUPPORT_RUNSIZE_H

#include <QtGlobal>

/// The size of a run that has a thorough form: the first number in every run of the tests, the
/// second when `./test --long` asks for it.
inline int getRunSize(int quick, int thorough)
{
    return qEnvironmentVariableIsSet("KESTOBOARD_LONG") ? thorough : quick;
}

#endif
