#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The key walk: asks for the keys of the key check list one after another. The LED of the current key blinks until the
/// key is pressed, and then lights steadily. Color and blink period of the LED are set in buttonfunctionbiz.cpp.
/// ButtonLightBiz, in contrast, tests the brightness of the LEDs.
///
/// Threads: call enter(), startTest(), skipCurrentStep() and the verdicts on the owner's thread. Key events arrive on
/// the thread of the keyboard service, also at the same time. state(), failCount() and the registration of listeners
/// are thread-safe. Listeners are called on the thread of the operation or of the key event.
class ButtonFunctionBiz
{
public:
    ButtonFunctionBiz();
    ~ButtonFunctionBiz();
    ButtonFunctionBiz(const ButtonFunctionBiz &) = delete;
    ButtonFunctionBiz &operator=(const ButtonFunctionBiz &) = delete;

    /// Resets the test and registers the key listener. Calls no listener.
    void enter();
    /// Gets the key check list from the factory mode widget and makes its first key blink. Does nothing without a
    /// keyboard service. Logs a warning and does nothing without the factory mode widget. If the list is empty, no key
    /// is under test.
    void startTest();
    /// Counts the current key as failed and goes to the next one. After the last key it announces the verdict.
    void skipCurrentStep();
    /// Sets the verdict, announces 103 (pass) or 102 (not pass), and removes the key listener.
    void setPass();
    void setNotPass();
    /// Returns the state code. It is 0 during the whole walk.
    int state() const;
    /// Returns the number of keys that were skipped since enter() or startTest().
    int failCount() const;

    /// Registers @p callback (state code, failure count) as the listener of @p requester and replaces an earlier one.
    /// An empty function changes nothing. The listeners of all requesters are called.
    void registerStateCallback(const std::string &requester, const std::function<void(int, int)> &callback);
    /// Sets the only listener (hal key, name in UTF-8) for the current key. An empty function removes it.
    void registerCurrentKeyUnderTestCallback(const std::string &requester,
                                             const std::function<void(unsigned int, const std::string &)> &callback);

private:
    class Impl;
    Impl *d;
};

}
