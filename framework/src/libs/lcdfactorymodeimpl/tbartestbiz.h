#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The calibration of the T-Bar in seven steps, each sent at a press of the operator. Operations belong on the thread
/// that made the object; listeners are called on the caller's thread. What the service reports is brought to that
/// thread and not read; the result of the last command is logged on the thread of the service.
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
    /// State code; may be read on any thread.
    int state() const;
    /// Always 0: nothing counts here.
    int failCount() const;
    /// The step that the next requestNextStep() carries out, counted from 0.
    int currentStepIndex() const;

    /// Puts @p callback (state code) under @p requester in the place of an earlier one; an empty function changes
    /// nothing. Every listener is called. Register before a run: the table has no lock.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);
    /// As registerStateCallback(); @p callback hears whether the next press is the last one.
    void registerRightBtnTextCallback(const std::string &requester, const std::function<void(bool)> &callback);

private:
    class Impl;
    Impl *d;
};

}
