#include "window/windowplayback.h"

#include "playing/scenarioresult.h"
#include "session/session.h"
#include "window/panelwindow.h"
#include "window/speedbar.h"

#include <QtCore/QCoreApplication>

namespace panelhost {

constexpr qint64 MaxBusyTime = 40;   ///< real milliseconds until the window takes input again
constexpr qint64 MaxShareTime = 100; ///< real milliseconds that are made up for, such as after a dialog of the desktop

WindowPlayback::WindowPlayback(Session &session, PanelWindow &window) : m_session(session), m_window(window)
{
    m_sinceShare.start();
    m_sinceServed.start();
    connect(&window, &PanelWindow::stepTriggered, this, &WindowPlayback::goOneStep);
    connect(&window, &PanelWindow::stopTriggered, this, &WindowPlayback::stop);
}

void WindowPlayback::goOneStep()
{
    m_goesOneStep = true;
    m_stepBegan = m_session.journal().count();
}

bool WindowPlayback::isStopped() const
{
    return m_isStopped || !m_window.isVisible();
}

bool WindowPlayback::isHeld() const
{
    return m_window.speed() == SpeedBar::Paused && !m_goesOneStep && !isStopped();
}

// How much time may pass until the window is served.
Milliseconds WindowPlayback::share(Milliseconds left)
{
    const double real = static_cast<double>(qMin(m_sinceShare.restart(), MaxShareTime));
    const double factor = m_window.speed();
    if (factor == 0 || m_goesOneStep)
        return left;
    if (factor < 0)
        return 0;
    const double due = real * factor + m_rest;
    const auto whole = static_cast<Milliseconds>(due);
    m_rest = due - static_cast<double>(whole);
    return qMin(left, whole);
}

void WindowPlayback::serveWindow()
{
    // The window is refreshed by a timer of its own, which ends the waiting.
    const bool mayWait = m_window.speed() != 0 && !m_goesOneStep;
    QCoreApplication::processEvents(mayWait ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    m_sinceServed.start();
}

bool WindowPlayback::wait(VirtualClock &clock, Milliseconds duration, const std::function<bool()> &done)
{
    const Milliseconds end = clock.now() + duration;
    for (;;) {
        bool isDone = false;
        QElapsedTimer busy;
        busy.start();
        const auto stops = [&] {
            isDone = done();
            if (m_goesOneStep && m_session.journal().count() > m_stepBegan)
                m_goesOneStep = false;
            return isDone || isHeld() || busy.elapsed() >= MaxBusyTime;
        };
        const bool isCut = clock.advanceUntil(share(end - clock.now()), stops);
        if (isDone || (!isCut && clock.now() >= end))
            return isDone;
        serveWindow();
    }
}

void WindowPlayback::stepPlayed(const StepResult &step, qint64 number)
{
    m_goesOneStep = false;
    m_window.showPlayedStep(step, number);
    if (m_sinceServed.elapsed() >= MaxBusyTime)
        serveWindow();
    while (isHeld())
        serveWindow();
}

}
