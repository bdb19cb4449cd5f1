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

/// The virtual clock of the process. All timers of the GUI thread, including those of the component, and all work that
/// the device has scheduled run by it, ordered by due time and then by the order in which they were added. The GUI
/// thread and the device thread never run at the same time: one runs until it has nothing left to do, then the other.
/// So a session depends only on the operator's actions and their times, not on the speed of the machine.
/// GUI thread only, except for now(), schedule(), post() and currentThread().
class VirtualClock
{
public:
    /// Installs the event dispatcher. Call it once in a process, before the application object is made.
    static void install();
    static VirtualClock &instance();

    Milliseconds now() const;

    /// Runs @p work on the device thread at now() + @p delay. Thread-safe.
    void schedule(Milliseconds delay, std::function<void()> work);
    /// Calls @p input on the GUI thread as soon as the clock has caught up with the wall clock, in the order of the
    /// calls. Used for input from outside; it is stamped with the virtual time at which it is handled. Only the event
    /// loop handles it, not advance() or settle(). Thread-safe.
    void post(std::function<void()> input);
    /// Runs @p work on the device thread now and waits for it. On the device thread itself it calls @p work directly.
    /// For what a device does in the middle of a call. GUI or device thread.
    void runOnDevice(const std::function<void()> &work);
    ThreadKind currentThread() const;

    /// Processes everything that is due now, on both threads, until nothing is left.
    void settle();
    /// Advances the clock by @p duration. Everything that becomes due on the way is processed at its own time.
    void advance(Milliseconds duration);
    /// Like advance(), but stops as soon as @p done returns true. Returns true in that case.
    bool advanceUntil(Milliseconds duration, const std::function<bool()> &done);

    /// Stops the clock: only advance() moves it.
    void stop();
    /// Starts the clock: it runs while the event loop waits, @p factor times as fast as the wall clock. With 0 it runs
    /// as fast as possible.
    void run(double factor);

    /// Returns whether the clock runs by the wall clock. GUI or device thread.
    bool isPaced() const;

    /// Sets a function that is called after each timer, each scheduled work and each action, when nothing that is due
    /// is left: the screen can be read then.
    void setObserver(std::function<void()> observer);

    /// Stops the clock, sets it to 0 and discards all scheduled work and posted input, for a new session.
    void restart();

private:
    VirtualClock();
    ~VirtualClock();
    Q_DISABLE_COPY(VirtualClock)

    class Impl;
    std::unique_ptr<Impl> d;
};

}
