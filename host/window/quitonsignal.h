#pragma once

#include <QtCore/QtGlobal>

#include <memory>

class QSocketNotifier;

namespace panelhost {

/// While it exists, SIGINT, SIGTERM and SIGHUP end the event loop instead of the process, so that what must be done at
/// the end is done. There can be only one at a time. A second signal of the same kind ends the process. GUI thread.
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

    std::unique_ptr<QSocketNotifier> m_notifier;
};

}
