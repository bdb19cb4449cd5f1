#pragma once

#include "phasetable.h"

#include <mutex>
#include <thread>

namespace LCD::FactoryModeImpl {

enum CompleteMachineResult : int {
    ResultNone = 0,
    ResultPassed = 1,
    ResultFailed = 2,
};

/// Where a run of the complete machine test stands.
struct RunState
{
    /// Grows with each start: a phase of an earlier run isn't the same phase of a later one.
    unsigned run = 0;
    int phaseIndex = PhaseNone;
    int testResult = ResultNone;
    /// Whether the timer shall run. A tick counts only while it shall.
    bool shouldTimerRun = false;
    /// A report on another thread is starting the phase, whose test may still stand as an earlier run left it.
    bool isStartingOnOtherThread = false;
    bool btnFuncRetestArmed = false;
    /// The button function phase shows its verdict screen.
    bool btnFuncAwaitingJudge = false;
};

inline bool operator==(const RunState &a, const RunState &b)
{
    return a.run == b.run && a.phaseIndex == b.phaseIndex && a.testResult == b.testResult
        && a.shouldTimerRun == b.shouldTimerRun && a.isStartingOnOtherThread == b.isStartingOnOtherThread
        && a.btnFuncRetestArmed == b.btnFuncRetestArmed && a.btnFuncAwaitingJudge == b.btnFuncAwaitingJudge;
}

/// The state of the run. It is changed by a RunAction only.
///
/// Threads: state() may be called on any thread. The thread that made the object is its owner's.
class MachineRun
{
public:
    RunState state() const
    {
        const std::lock_guard locker(m_mutex);
        return m_state;
    }

private:
    friend class RunAction;

    mutable std::mutex m_mutex;
    RunState m_state;

    // Used on the owner's thread only.
    const std::thread::id m_ownThread = std::this_thread::get_id();
    RunState m_ownThreadState;
    int m_nestedActions = 0;
};

/// One thing that happens to the run: a press, a tick, the report of a test. An action knows the state in which it
/// began. Actions on the owner's thread that happen inside one another share this knowledge, and so each goes on from
/// what the other has done. What another thread has changed in the meantime makes an action late: it must not leave a
/// phase in which it didn't begin.
///
/// Threads: may be made on any thread; belongs to the thread that made it.
class RunAction
{
public:
    explicit RunAction(MachineRun &run)
        : m_run(run), m_onOwnThread(std::this_thread::get_id() == run.m_ownThread),
          m_known(m_onOwnThread ? run.m_ownThreadState : m_ownView)
    {
        if (!m_onOwnThread || m_run.m_nestedActions++ == 0)
            m_known = m_run.state();
    }
    ~RunAction()
    {
        if (m_onOwnThread)
            --m_run.m_nestedActions;
    }
    RunAction(const RunAction &) = delete;
    RunAction &operator=(const RunAction &) = delete;

    bool isOnOwnThread() const { return m_onOwnThread; }

    /// The run as this action knows it.
    const RunState &state() const { return m_known; }

    /// Whether no other thread has changed the run since this action began.
    bool isCurrent() const { return m_run.state() == m_known; }

    /// Lets @p edit change the state if isCurrent(), in one step. Returns false, and changes nothing, otherwise.
    template <class Edit>
    bool change(const Edit &edit)
    {
        const std::lock_guard locker(m_run.m_mutex);
        return m_run.m_state == m_known && apply(edit);
    }

    /// As change(), but only the run must be the same: for a failure, which concerns the whole run.
    template <class Edit>
    bool changeSameRun(const Edit &edit)
    {
        const std::lock_guard locker(m_run.m_mutex);
        return m_run.m_state.run == m_known.run && apply(edit);
    }

    /// Begins the next run, whatever has become of this one.
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
    RunState m_ownView;
    RunState &m_known;
};

}
