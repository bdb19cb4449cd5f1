#pragma once

#include "time/virtualclock.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>

#include <functional>

namespace panelhost {

struct StepResult;
class PanelWindow;
class Session;

/// Lets a scenario be played in the window: time passes at the speed of the window, and the window takes input in
/// between. Its functions are for the options of the Player. GUI thread.
class WindowPlayback : public QObject
{
    Q_OBJECT

public:
    /// @p session and @p window must outlive the playback.
    WindowPlayback(Session &session, PanelWindow &window);

    /// Lets @p duration pass on @p clock, or less if @p done returns true. Returns whether it did.
    bool wait(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done);
    /// Shows the step with this @p number. Returns when the next step may be played; while the window is paused, that
    /// is when the user asks for it.
    void stepPlayed(const StepResult &step, qint64 number);
    /// Returns whether the user has stopped the scenario or closed the window.
    bool isStopped() const;
    void stop() { m_isStopped = true; }

private:
    void goOneStep();
    bool isHeld() const;
    Milliseconds share(Milliseconds left);
    void serveWindow();

    Session &m_session;
    PanelWindow &m_window;
    bool m_isStopped = false;
    bool m_goesOneStep = false; ///< although the window is paused
    qint64 m_stepBegan = 0;     ///< the number of journal lines when that step began
    QElapsedTimer m_sinceShare;
    QElapsedTimer m_sinceServed;
    double m_rest = 0; ///< of a millisecond
};

}
