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

/// The virtual clock of the process. It fires all timers of the GUI thread, including those of the component, and runs
/// all work that the device has scheduled. Items with the same due time are handled in the order in which they were
/// added. The GUI thread and the device thread take turns: one runs until it has nothing left to do, then the other.
/// Therefore a session depends only on the operator's actions and their times, not on the speed of the machine. GUI
/// thread only, except for now(), schedule(), post() and currentThread().
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
    /// calls. For input from outside the process. Its virtual time is the time at which it is handled. Only the event
    /// loop handles it, not advance() or settle(). Thread-safe.
    void post(std::function<void()> input);
    /// Runs @p work on the device thread now and waits for it. If called on the device thread, calls @p work directly.
    /// Use it for what the device does while a service's operation is being called. GUI or device thread.
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

    /// Sets a function that is called after each timer, each scheduled work and each action, as soon as nothing else is
    /// due. The screen can be read at that moment.
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
