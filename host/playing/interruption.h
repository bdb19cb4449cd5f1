#pragma once

#include <QtCore/QtGlobal>

namespace panelhost {

/// While it lives, SIGINT, SIGTERM and SIGHUP are remembered instead of ending the process. A second signal of the
/// same kind ends it at once. A signal that the process was started to ignore stays ignored. One at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();

    /// The signal that came; 0 if none has. Any thread.
    static int signalNumber();
    /// Ends the process as the signal that came would have, so that its parent sees why.
    [[noreturn]] static void endProcess();

private:
    Q_DISABLE_COPY(Interruption)
};

}
