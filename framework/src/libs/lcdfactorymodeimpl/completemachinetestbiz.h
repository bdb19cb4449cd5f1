#pragma once

#include "completemachinephaseinfo.h"

#include <functional>
#include <string>

#include <QtCore/QString>

namespace LCD::FactoryModeImpl {

/// The complete machine test: eleven phases, one after the other, up to the first failure or to the pass. It has no
/// widget: a screen is a CompleteMachinePhaseInfo. Neither a callback nor an operation of a host service that the run
/// calls may destroy the test.
///
/// Threads: lives on the thread that made it, which has an event loop; start() and the two button operations are called
/// there, all others on any thread. Reports arrive on the threads of the host services. A report leaves only the phase
/// in which it arrived: when the operator has gone on meanwhile, it does nothing more. Callbacks are called on the
/// test's own thread or on that of the report that led to them.
class CompleteMachineTestBiz
{
public:
    CompleteMachineTestBiz();
    /// Waits for callbacks that are under way on other threads, which must therefore not wait for this one; nor must
    /// the operations of host services that are called inside them. Stops no single test.
    ~CompleteMachineTestBiz();
    CompleteMachineTestBiz(const CompleteMachineTestBiz &) = delete;
    CompleteMachineTestBiz &operator=(const CompleteMachineTestBiz &) = delete;

    /// Begins a run at phase 0, also while another is under way.
    void start();
    /// -1 before the first run, 0 to 10 during one, 11 after a pass. A failed run stays on its phase.
    int currentPhaseIndex() const;
    /// True on phase 0 to 10, also after a failure.
    bool isRunning() const;
    /// 0 none yet, 1 passed, 2 failed.
    int result() const;

    /// The operator says that the phase failed.
    void onLeftBtnClicked();
    /// The operator says: go on.
    void onRightBtnClicked();

    // Each puts the callback in the place of an earlier one of the same requester. An empty requester or an empty
    // callback changes nothing.
    void registerPhaseCallback(const std::string &requester,
                               const std::function<void(const CompleteMachinePhaseInfo &)> &callback);
    void registerLogCallback(const std::string &requester, const std::function<void(const QString &)> &callback);
    void registerStepIconCallback(const std::string &requester, const std::function<void(int)> &callback);

private:
    class Impl;
    Impl *d;
};

static_assert(sizeof(CompleteMachineTestBiz) == sizeof(void *));

}
