#pragma once

#include <QtCore/QtGlobal>

namespace panelhost {

/// Catches SIGINT, SIGTERM and SIGHUP as long as the object exists. A second signal of the same kind ends the process.
/// A signal that is ignored when the object is created stays ignored. Only one object can exist at a time.
class Interruption
{
public:
    /// Each caught signal makes the event descriptor @p wakeUp readable, unless it is -1. It must outlive the object.
    explicit Interruption(int wakeUp = -1);
    ~Interruption();

    /// Returns the signal that was caught; 0 if there was none. Thread-safe.
    static int signalNumber();
    /// Ends the process by the signal that was caught, so that its parent sees the reason.
    [[noreturn]] static void endProcess();

private:
    Q_DISABLE_COPY(Interruption)
};

}
