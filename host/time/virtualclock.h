#pragma once

#include <QtCore/QtGlobal>

#include <functional>
#include <memory>

namespace panelhost {

/// Virtual time in milliseconds: a point in time, counted from the beginning of the session, or a duration.
using Milliseconds = qint64;

/// On which thread something happens, as the journal names it.
enum class ThreadKind {
    Gui,
    Device,
    Other
};

/// The one clock of panelhost. Every QTimer of the GUI thread, the component's among them, and every piece of work
/// that the device has put under way is due at an instant, and they run strictly in the order (instant, sequence).
/// GUI thread and device thread never run at once: the GUI thread hands the baton over when it has come to rest and
/// takes it back when the device thread has. So what happens depends on the operator's actions and their instants
/// alone, not on the machine's speed. GUI thread only, but for now() and schedule().
class VirtualClock
{
public:
    /// Puts the event dispatcher in place. Before the application object is made; once in a process.
    static void install();
    static VirtualClock &instance();

    Milliseconds now() const;

    /// Runs @p work on the device thread at the instant now() + @p delay. Any thread.
    void schedule(Milliseconds delay, std::function<void()> work);
    /// Runs @p work on the device thread at once and waits for it; in place when called on the device thread. For
    /// what a device does in the middle of a call. GUI or device thread.
    void runOnDevice(const std::function<void()> &work);
    ThreadKind currentThread() const;

    /// Delivers all that is due at the present instant, on both threads, until nothing is left.
    void settle();
    /// Fires all that is due up to now() + @p duration, each at its own instant, settling in between.
    void advance(Milliseconds duration);
    /// Like advance(), but stops as soon as @p done says so. True if it did.
    bool advanceUntil(Milliseconds duration, const std::function<bool()> &done);

    /// How virtual time runs while the event loop waits. Stopped: only advance() moves it (play). Otherwise it
    /// follows the wall clock times @p factor; 0 means as fast as it goes.
    void stop();
    void run(double factor);

    /// Called after each step (a timer, a piece of device work, an action) once everything has settled: the place to
    /// look at the screen.
    void setObserver(std::function<void()> observer);

    /// Sets the clock back to 0, stopped, and drops all work of the device: a new session begins.
    void restart();

private:
    VirtualClock();
    ~VirtualClock();
    Q_DISABLE_COPY(VirtualClock)

    class Impl;
    std::unique_ptr<Impl> d;
};

}
