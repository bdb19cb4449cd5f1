#pragma once

#include "playing/interruption.h"

#include <QtCore/QtGlobal>

#include <memory>
#include <optional>

class QSocketNotifier;

namespace panelhost {

/// While the object exists, SIGINT, SIGTERM and SIGHUP end the event loop instead of the process, so that the process
/// can save and restore what it must. Only one object can exist at a time. For a second signal and for ignored signals
/// see Interruption. GUI thread.
class QuitOnSignal
{
public:
    QuitOnSignal();
    ~QuitOnSignal();

    /// Returns whether a signal has come. It may have come before the event loop has begun.
    static bool isAsked();
    /// Ends the process by the signal that has ended the event loop. Does nothing if there was none.
    void endProcessIfAsked();

private:
    Q_DISABLE_COPY(QuitOnSignal)

    const int m_wakeUp; ///< event descriptor
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::optional<Interruption> m_interruption;
};

}
