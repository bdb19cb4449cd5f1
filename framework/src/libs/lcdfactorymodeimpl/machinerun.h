#pragma once

#include "completemachinephasetable.h"

#include <mutex>
#include <thread>

namespace LCD::FactoryModeImpl {

enum CompleteMachineResult : int {
    ResultNone = 0,
    ResultPassed = 1,
    ResultFailed = 2,
};

/// The state of a run of the complete machine test.
struct RunState
{
    /// Incremented at each start, so that a phase of one run differs from the same phase of another run.
    unsigned run = 0;
    int phaseIndex = PhaseNone;
    int testResult = ResultNone;
    /// Incremented at each failure, so that a second failure of the run differs from the first one.
    unsigned failures = 0;
    /// Whether the phase timer should run. Ticks are ignored otherwise.
    bool shouldTimerRun = false;
    /// A report on another thread is starting the phase. Its single test may still have the state of an earlier run.
    bool isStartingOnOtherThread = false;
    /// Whether the right button repeats a failed button function test. It is read, but nothing sets it to true, because
    /// a failed test isn't repeated. It stays to show which code a repetition would use.
    bool btnFuncRetestArmed = false;
    /// The button function phase shows its verdict screen.
    bool btnFuncAwaitingJudge = false;
};

inline bool operator==(const RunState &a, const RunState &b)
{
    return a.run == b.run && a.phaseIndex == b.phaseIndex && a.testResult == b.testResult && a.failures == b.failures
        && a.shouldTimerRun == b.shouldTimerRun && a.isStartingOnOtherThread == b.isStartingOnOtherThread
        && a.btnFuncRetestArmed == b.btnFuncRetestArmed && a.btnFuncAwaitingJudge == b.btnFuncAwaitingJudge;
}

inline void setFailed(RunState &state)
{
    state.testResult = ResultFailed;
    ++state.failures;
}

/// Holds the state of the run. It is changed through a RunEvent only.
///
/// Threads: state() may be called on any thread. The object's own thread is the one that created it.
class MachineRun
{
public:
    RunState state() const
    {
        const std::lock_guard locker(m_mutex);
        return m_state;
    }

private:
    friend class RunEvent;

    mutable std::mutex m_mutex;
    RunState m_state;

    // Used on the object's own thread only.
    const std::thread::id m_ownThread = std::this_thread::get_id();
    RunState m_ownThreadState;
    int m_nestedEvents = 0;
};

/// An event of the run while it is handled: a button press, a timer tick or a notification of a single test. It stores
/// the state that the run had when its handling began. On the run's own thread, an event can lead to another one, which
/// is then nested in it. Nested events share the stored state, so that each one continues where the other has stopped.
/// If another thread has changed the run in the meantime, the event is late: it must not end a phase in which it didn't
/// begin.
///
/// Threads: may be created on any thread, and is used on this thread only.
class RunEvent
{
public:
    explicit RunEvent(MachineRun &run)
        : m_run(run), m_onOwnThread(std::this_thread::get_id() == run.m_ownThread),
          m_nested(m_onOwnThread && run.m_nestedEvents++ > 0), m_known(m_onOwnThread ? run.m_ownThreadState : m_ownView)
    {
        if (!m_nested)
            m_known = m_run.state();
    }
    ~RunEvent()
    {
        if (m_onOwnThread)
            --m_run.m_nestedEvents;
    }
    RunEvent(const RunEvent &) = delete;
    RunEvent &operator=(const RunEvent &) = delete;

    bool isOnOwnThread() const { return m_onOwnThread; }

    /// Returns whether another event on the run's own thread has led to this one.
    bool isNested() const { return m_nested; }

    /// Returns the state of the run as this event knows it.
    const RunState &state() const { return m_known; }

    /// Returns whether no other thread has changed the run since this event began.
    bool isCurrent() const { return m_run.state() == m_known; }

    /// Returns whether no other thread has begun a new run since this event began.
    bool isSameRun() const { return m_run.state().run == m_known.run; }

    /// If isCurrent(), lets @p edit change the state and returns true. Otherwise changes nothing and returns false. The
    /// check and the change are atomic.
    template <class Edit>
    bool change(const Edit &edit)
    {
        const std::lock_guard locker(m_run.m_mutex);
        return m_run.m_state == m_known && apply(edit);
    }

    /// Like change(), but only requires that the run is the same. For a failure, which concerns the whole run.
    template <class Edit>
    bool changeSameRun(const Edit &edit)
    {
        const std::lock_guard locker(m_run.m_mutex);
        return m_run.m_state.run == m_known.run && apply(edit);
    }

    /// Begins the next run, in any state of the current one.
    void beginRun()
    {
        const std::lock_guard locker(m_run.m_mutex);
        apply([](RunState &state) {
            ++state.run;
            state.phaseIndex = PhaseScreenBrightness;
            state.testResult = ResultNone;
            state.shouldTimerRun = false;
            state.isStartingOnOtherThread = false;
        });
    }

private:
    template <class Edit>
    bool apply(const Edit &edit)
    {
        edit(m_run.m_state);
        m_known = m_run.m_state;
        return true;
    }

    MachineRun &m_run;
    const bool m_onOwnThread;
    const bool m_nested;
    RunState m_ownView;
    RunState &m_known;
};

}
