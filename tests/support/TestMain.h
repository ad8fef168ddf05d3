#ifndef SUPPORT_TESTMAIN_H
#define SUPPORT_TESTMAIN_H

#include "support/TestApplication.h"

#include <QtTest>

/// The main function of a test program that needs the panel's globals.
#define KESTOBOARD_TEST_MAIN(TestClass)                                                            \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        Test::TestApplication application(argc, argv);                                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

#endif
