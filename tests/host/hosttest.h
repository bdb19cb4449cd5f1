#pragma once

#include "application/processsetup.h"
#include "time/virtualclock.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

/// A text in a test, short enough to read in a table.
inline QString q(const char *text)
{
    return QString::fromUtf8(text);
}

/// The main function of a test that runs in virtual time: the clock is in place before the application object is.
#define PANELHOST_TEST_MAIN(TestClass)                                                                                 \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        panelhost::prepareProcess(false);                                                                              \
        QApplication application(argc, argv);                                                                          \
        panelhost::prepareApplication();                                                                               \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
