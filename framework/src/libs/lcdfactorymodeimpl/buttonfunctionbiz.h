#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The keys of the key check list, one at a time: the key blinks, waits to be pressed, turns steady.
///
/// Threads: enter(), startTest(), skipCurrentStep() and the verdicts belong on the owner's thread; key events arrive on
/// the thread of the keyboard service, also at the same time. state(), failCount() and the listeners may be used on any
/// thread. Listeners are called on the thread of the operation or of the key event.
class ButtonFunctionBiz
{
public:
    ButtonFunctionBiz();
    ~ButtonFunctionBiz();
    ButtonFunctionBiz(const ButtonFunctionBiz &) = delete;
    ButtonFunctionBiz &operator=(const ButtonFunctionBiz &) = delete;

    /// Forgets an earlier walk and begins to listen to the keys. Announces nothing.
    void enter();
    /// Fetches the key check list and lets its first key blink. Does nothing without a keyboard service; warns and
    /// does nothing without the factory mode widget. An empty list leaves no key under test.
    void startTest();
    /// Counts the current key as failed and goes to the next; on the last key it announces the verdict itself.
    void skipCurrentStep();
    /// Verdict, 103 or 102; stops listening to the keys.
    void setPass();
    void setNotPass();
    /// State code; 0 throughout the walk.
    int state() const;
    /// Number of keys skipped since enter() or startTest().
    int failCount() const;

    /// Puts @p callback (state code, fail count) under @p requester in the place of an earlier one; an empty function
    /// changes nothing. Every listener is called.
    void registerStateCallback(const std::string &requester, const std::function<void(int, int)> &callback);
    /// Sets the one listener (key code, name in UTF-8) for the key now under test; an empty function removes it.
    void registerCurrentKeyUnderTestCallback(const std::string &requester,
                                             const std::function<void(unsigned int, const std::string &)> &callback);

private:
    class Impl;
    Impl *d;
};

}
