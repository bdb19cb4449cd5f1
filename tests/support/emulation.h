#pragma once

#include <QtCore/QtGlobal>

/// Returns true if the test runs under an emulator of another processor. It can't start programs there, can't use
/// threads after fork(), and is many times slower.
inline bool isEmulated()
{
    return qEnvironmentVariableIsSet("LCD_EMULATED");
}

/// Returns a limit of time for the processor on which the test runs.
template <class Number>
Number emulatedLimit(Number limit)
{
    return isEmulated() ? limit * 20 : limit;
}

#define SKIP_IF_EMULATED()                                                                                             \
    do {                                                                                                               \
        if (isEmulated())                                                                                              \
            QSKIP("The emulator can't start other programs.");                                                         \
    } while (false)
