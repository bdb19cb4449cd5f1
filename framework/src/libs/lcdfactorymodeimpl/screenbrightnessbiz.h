#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The test of the screen brightness: sets the three screens to five brightness levels in two cycles. While the test
/// runs, the state code is the level in percent. Without a keyboard service the test runs, but no screen changes.
///
/// Threads: call the operations on any thread, but only one at a time; otherwise the steps lose their order. state(),
/// the functions for the requester and the registration of listeners are thread-safe. Listeners are called on the
/// thread of the operation.
class ScreenBrightnessBiz
{
public:
    ScreenBrightnessBiz();
    ~ScreenBrightnessBiz();
    ScreenBrightnessBiz(const ScreenBrightnessBiz &) = delete;
    ScreenBrightnessBiz &operator=(const ScreenBrightnessBiz &) = delete;

    /// Resets the test and tells the device which test is active. Changes no brightness.
    void enter();
    /// Shows the first level. Doesn't reset the cycle count of an unfinished test; only enter() and reTest() do.
    void startTest();
    /// Shows the next level. After the second cycle it announces 101. Does nothing unless a level is shown.
    void nextStep();
    /// Sets the verdict and announces 103 (pass) or 102 (not pass). The screens keep their level.
    void setPass();
    void setNotPass();
    /// Resets the test. The screens keep their level.
    void reTest();
    /// Returns the state code.
    int state() const;
    /// Sets all screens to 100 percent. The state doesn't change.
    void restoreBrightnessToNormal();

    /// Sets the current requester: the only one whose listeners are called. It is empty at first. Calls no listener.
    void setCurRequester(const std::string &requester);
    /// Returns the current requester.
    std::string getCurRequester() const;
    /// Registers @p callback (state code) as the listener of @p requester and replaces an earlier one. An empty
    /// function changes nothing.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);

private:
    class Impl;
    Impl *d;
};

}
