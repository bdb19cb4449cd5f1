#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The T-Bar test: calibrates the T-Bar in seven steps. Each press of the operator sends one command. The reports of
/// the service aren't evaluated. If the last command fails, a warning is logged.
///
/// Threads: call the operations on the thread that created the object; the service's reports are moved to that thread.
/// Results of commands are logged on the thread of the service. state(), failCount(), currentStepIndex() and the
/// registration of listeners are thread-safe. Listeners are called on the thread of the operation.
class TbarTestBiz
{
public:
    TbarTestBiz();
    ~TbarTestBiz();
    TbarTestBiz(const TbarTestBiz &) = delete;
    TbarTestBiz &operator=(const TbarTestBiz &) = delete;

    /// Resets the test and tells the device which test is active.
    void enter();
    /// Starts at the first step. Logs a warning and does nothing without a keyboard service.
    void startTest();
    /// Sends the command of the current step and goes to the next step. The last step sets the state to 103 without
    /// announcing it, so check state() afterwards. Does nothing without a calibration service.
    void requestNextStep();
    /// Sets the verdict and announces 103 (pass) or 102 (not pass).
    void setPass();
    void setNotPass();
    /// Resets the test.
    void reTest();
    /// Returns the state code.
    int state() const;
    /// Returns 0, because this test doesn't count failures.
    int failCount() const;
    /// Returns the step that the next call of requestNextStep() performs, counted from 0.
    int currentStepIndex() const;

    /// Registers @p callback (state code) as the listener of @p requester and replaces an earlier one. An empty
    /// function changes nothing. The listeners of all requesters are called.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);
    /// Like registerStateCallback(). @p callback gets true if the next press is the last one.
    void registerRightBtnTextCallback(const std::string &requester, const std::function<void(bool)> &callback);

private:
    class Impl;
    Impl *d;
};

}
