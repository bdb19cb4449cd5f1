#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The LEDs of all keys through five brightness levels, twice over, and dark at the end. The state code is the level
/// in percent. Without a keyboard service the walk goes on and no LED changes.
///
/// Threads: operations may be called on any thread, but not two of them at once, or the walk loses its order; state(),
/// the requester and the listeners may be used on any thread at any time. Listeners are called on the caller's thread.
class ButtonLightBiz
{
public:
    ButtonLightBiz();
    ~ButtonLightBiz();
    ButtonLightBiz(const ButtonLightBiz &) = delete;
    ButtonLightBiz &operator=(const ButtonLightBiz &) = delete;

    /// Back to idle, and tells the device which test is active. Changes no LED.
    void enter();
    /// Shows the first level. A trip that was left half way counts on: only enter() and reTest() forget it.
    void startTest();
    /// Shows the next level; after the second trip it puts the keys out and announces 101. Does nothing unless a
    /// level shows.
    void nextStep();
    /// Verdict, 103 or 102. The LEDs stay at their level.
    void setPass();
    void setNotPass();
    /// Back to idle. The LEDs stay at their level.
    void reTest();
    /// State code.
    int state() const;

    /// Only the listeners registered under this name hear anything; at first the empty one. Announces nothing.
    void setCurRequester(const std::string &requester);
    std::string getCurRequester() const;
    /// Puts @p callback (state code) under @p requester in the place of an earlier one; an empty function changes
    /// nothing.
    void registerStateCallback(const std::string &requester, const std::function<void(int)> &callback);

private:
    class Impl;
    Impl *d;
};

}
