#ifndef SUPPORT_TESTMAIN_H
#define SUPPORT_TESTMAIN_H

#include "support/TestApplication.h"

#include <QtTest>

// A condition is waited for as long as a hanging test may take, not for the seconds that a busy
// machine can be away.
#undef QTRY_VERIFY
#define QTRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT((condition), 60'000)
#undef QTRY_VERIFY2
#define QTRY_VERIFY2(condition, words) QTRY_VERIFY2_WITH_TIMEOUT((condition), words, 60'000)
#undef QTRY_COMPARE
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT((actual), (expected), 60'000)

/// The main function of a test program that needs the panel's globals.
#define KESTOBOARD_TEST_MAIN(TestClass)                                                            \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        Test::TestApplication application(argc, argv);                                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

#endif
