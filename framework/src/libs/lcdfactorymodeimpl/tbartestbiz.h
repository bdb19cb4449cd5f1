#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The calibration of the T-Bar in seven steps, each sent at a press of the operator. What the service reports isn't
/// read; the result of the last command is logged.
///
/// Threads: operations belong on the thread that made the object, to which the reports of the service are brought.
/// Results of commands are logged on the thread of the service. state(), failCount(), currentStepIndex() and the
/// listeners may be used on any thread. Listeners are called on the caller's thread.
class TbarTestBiz
{
public:
    TbarTestBiz();
    ~TbarTestBiz();
    TbarTestBiz(const TbarTestBiz &) = delete;
    TbarTestBiz &operator=(const TbarTestBiz &) = delete;

    /// Back to idle, and tells the device which test is active.
    void enter();
    /// Begins at the first step. Warns and does nothing without a keyboard service.
    void startTest();
    /// Sends the command of the current step and goes to the next. The last step passes without announcing it: read
    /// state() afterwards. Does nothing without a calibration service.
    void requestNextStep();
    /// Verdict, 103 or 102.
    void setPass();
    void setNotPass();
    /// Back to idle.
    void reTest();
    /// State code.
    int state() const;
    /// Always 0: nothing counts here.
    int failCount() const;
    /// The step that the next requestNextStep() carries out, counted from 0.
    int currentStepIndex() const;

    /// Puts @p callback (state code) under @p requester in the place of an earlier one; an empty function changes
    /// nothing. Every listener is called.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);
    /// As registerStateCallback(); @p callback hears whether the next press is the last one.
    void registerRightBtnTextCallback(const std::string &requester, const std::function<void(bool)> &callback);

private:
    class Impl;
    Impl *d;
};

}
