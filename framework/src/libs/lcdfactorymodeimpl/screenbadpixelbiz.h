#pragma once

#include <functional>
#include <string>

namespace LCD::FactoryModeImpl {

/// Twelve test patterns on the screens, one after another. The owner calls the next one, on its own timer or at the
/// press of a button. A service that is missing is skipped.
///
/// Threads: operations may be called on any thread, but not two of them at once, or the walk loses its order; state(),
/// the requester and the listeners may be used on any thread at any time. Listeners are called on the caller's thread.
class ScreenBadPixelBiz
{
public:
    ScreenBadPixelBiz();
    ~ScreenBadPixelBiz();
    ScreenBadPixelBiz(const ScreenBadPixelBiz &) = delete;
    ScreenBadPixelBiz &operator=(const ScreenBadPixelBiz &) = delete;

    /// Back to idle, and tells the device which test is active. Shows nothing yet.
    void enter();
    /// Shows the first pattern.
    void startTest();
    /// Shows the next pattern; past the twelfth it clears the screens and announces 101.
    void nextStep();
    /// Verdict: clears the screens and announces 103 or 102.
    void setPass();
    void setNotPass();
    /// Back to idle with cleared screens.
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
