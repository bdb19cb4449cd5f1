#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// The three screens through five brightness levels, twice over. The state code is the level in percent. Without a
/// keyboard service the walk goes on and no screen changes.
///
/// Threads: operations may be called on any thread, but not two of them at once, or the walk loses its order; state(),
/// the requester and the listeners may be used on any thread at any time. Listeners are called on the caller's thread.
class ScreenBrightnessBiz
{
public:
    ScreenBrightnessBiz();
    ~ScreenBrightnessBiz();
    ScreenBrightnessBiz(const ScreenBrightnessBiz &) = delete;
    ScreenBrightnessBiz &operator=(const ScreenBrightnessBiz &) = delete;

    /// Back to idle, and tells the device which test is active. Changes no brightness.
    void enter();
    /// Shows the first level. A trip that was left half way counts on: only enter() and reTest() forget it.
    void startTest();
    /// Shows the next level; after the second trip it announces 101. Does nothing unless a level shows.
    void nextStep();
    /// Verdict, 103 or 102. The screens stay at their level.
    void setPass();
    void setNotPass();
    /// Back to idle. The screens stay at their level.
    void reTest();
    /// State code.
    int state() const;
    /// Sets all screens to 100 percent; the state stays as it is.
    void restoreBrightnessToNormal();

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
