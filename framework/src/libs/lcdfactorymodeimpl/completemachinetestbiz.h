#pragma once

#include "completemachinephaseinfo.h"

#include <functional>
#include <string>

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// The driver of the complete machine test: runs eleven phases one after another until one fails or all have passed. It
/// has no widget; it describes each screen by a CompleteMachinePhaseInfo. The test must not be deleted by one of its
/// callbacks, or by an operation of a host service that the run calls.
///
/// Threads: call start() and the two button functions on the thread that created the object, which needs an event loop.
/// All other functions are thread-safe. Reports arrive on the threads of the host services. A report can leave only the
/// phase in which it arrived: if the operator has gone on in the meantime, it has no further effect. Callbacks are
/// called on the test's own thread or on the thread of the report that caused them.
class CompleteMachineTestBiz
{
public:
    CompleteMachineTestBiz();
    /// Waits for callbacks that are running on other threads. Neither these callbacks nor the operations of host
    /// services that they call may wait for this thread. Doesn't stop a single test.
    ~CompleteMachineTestBiz();
    CompleteMachineTestBiz(const CompleteMachineTestBiz &) = delete;
    CompleteMachineTestBiz &operator=(const CompleteMachineTestBiz &) = delete;

    /// Starts a run at phase 0, even if another is in progress.
    void start();
    /// Returns -1 before the first run, 0 to 10 during a run, and 11 after a pass. A failed run keeps its phase.
    int currentPhaseIndex() const;
    /// Returns true in the phases 0 to 10, also after a failure.
    bool isRunning() const;
    /// Returns the result of the run: 0 none yet, 1 passed, 2 failed.
    int result() const;

    /// Handles a press of the left button: the operator fails the phase.
    void onLeftBtnClicked();
    /// Handles a press of the right button: the operator continues.
    void onRightBtnClicked();

    // Each of these registers a callback and replaces an earlier one of the same requester. An empty requester or an
    // empty function changes nothing.
    /// Sets the callback for screens.
    void registerPhaseCallback(const std::string &requester,
                               const std::function<void(const CompleteMachinePhaseInfo &)> &callback);
    /// Sets the callback for lines of the page's log.
    void registerLogCallback(const std::string &requester, const std::function<void(const QString &)> &callback);
    /// Sets the callback for step lines that passed; it gets the index of the line, counted from 0.
    void registerStepIconCallback(const std::string &requester, const std::function<void(int)> &callback);

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(CompleteMachineTestBiz) == sizeof(void *));

}
