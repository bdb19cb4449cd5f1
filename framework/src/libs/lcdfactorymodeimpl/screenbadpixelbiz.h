#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The test for bad pixels: shows twelve test patterns on the screens. The owner calls nextStep() for each of them,
/// from a timer or when a button is pressed. A missing service is skipped.
///
/// Threads: call the operations on any thread, but only one at a time; otherwise the steps lose their order. state(),
/// the functions for the requester and the registration of listeners are thread-safe. Listeners are called on the
/// thread of the operation.
class ScreenBadPixelBiz
{
public:
    ScreenBadPixelBiz();
    ~ScreenBadPixelBiz();
    ScreenBadPixelBiz(const ScreenBadPixelBiz &) = delete;
    ScreenBadPixelBiz &operator=(const ScreenBadPixelBiz &) = delete;

    /// Resets the test and tells the device which test is active. Shows no pattern yet.
    void enter();
    /// Shows the first pattern.
    void startTest();
    /// Shows the next pattern. After the twelfth it clears the pattern and announces 101.
    void nextStep();
    /// Sets the verdict: clears the pattern and announces 103 (pass) or 102 (not pass).
    void setPass();
    void setNotPass();
    /// Resets the test and clears the pattern.
    void reTest();
    /// Returns the state code.
    int state() const;

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
